#include "feeds/feed_poller.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QRandomGenerator>
#include <algorithm>
#include <ctime>
#include <utility>

#include "catalogue/free_memory.h"
#include "feeds/event_text.h"
#include "feeds/summary_feed.h"
#include "transfer/http_address.h"

namespace borvane::mirror {

namespace {

using std::chrono::milliseconds;

// What the reading of a larger text leaves to the C library is worth giving back.
constexpr qsizetype large_text = qsizetype{1} << 20;

/// How long the poller has to have been stopped to ask at once when it is started again.
constexpr milliseconds long_stop = std::chrono::minutes(1);

milliseconds ReadClock(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return std::chrono::duration_cast<milliseconds>(std::chrono::seconds(time.tv_sec) +
                                                  std::chrono::nanoseconds(time.tv_nsec));
}

Clocks ClocksOfThisComputer() {
  return {.elapsed = ReadClock(CLOCK_BOOTTIME),
          .awake = ReadClock(CLOCK_MONOTONIC),
          .of_day = milliseconds(QDateTime::currentMSecsSinceEpoch())};
}

double RandomOfThisComputer() { return QRandomGenerator::global()->generateDouble(); }

/// Host and port of a feed; the address itself when it has none.
std::string HostOf(const QString &url) {
  const std::optional<HttpAddress> address = ParseHttpAddress(url.toStdString());
  return address ? address->Root() : url.toStdString();
}

/// A fault as a part of one line of the log: parts of it may have come from the server.
QString LogText(const QString &fault) {
  constexpr qsizetype longest = 200;
  QString text = fault.left(longest);
  for (QChar &character : text)
    if (!character.isPrint())
      character = '?';
  return text;
}

/// Whether the answer says that there are no events, as services of the text form do.
bool SaysThereIsNothing(const Feed &feed, const FeedAnswer &answer) {
  constexpr int no_content = 204;
  constexpr int not_found = 404;
  if (feed.form != FeedForm::EventText)
    return false;
  return answer.status == no_content || (answer.status == not_found && feed.url.contains("nodata=404"));
}

/// Lines of text do not say when they were made; the server that has sent them may, with `made`.
FeedReading ReadSentEventText(const QByteArray &text, qint64 made, qint64 now) {
  if (const QString fault = made != 0 ? FaultOfTime(made, now) : QString(); !fault.isEmpty())
    return FaultyReading(fault);
  FeedReading reading = ReadEventText(text);
  if (reading.fault.isEmpty())
    reading.generated = made;
  return reading;
}

/// What is worth a line about a number that ought to be none: it may go up and down with each reading.
enum class Change {
  None,
  Worse,  ///< more than ever since it was none
  Over,   ///< none again
};

/// Compares the number with the most since it was none, and keeps that.
Change ChangeOf(int &most, int number) {
  if (number > most) {
    most = number;
    return Change::Worse;
  }
  return number == 0 && std::exchange(most, 0) > 0 ? Change::Over : Change::None;
}

FeedReading ReadFeedText(FeedForm form, const QByteArray &text, qint64 made, qint64 now) {
  switch (form) {
    case FeedForm::Summary:
      return ReadSummaryFeed(text, now);
    case FeedForm::EventText:
      break;
  }
  return ReadSentEventText(text, made, now);
}

}  // namespace

/// How many events of a reading were left out.
struct FeedPoller::LeftOut {
  int all = 0;
  int nameless = 0;  ///< those of them that have no id
};

/// A feed and the state of its requests.
struct FeedPoller::Polled {
  Feed feed;
  std::string host;
  FeedState state;
  FeedSchedule schedule;
  std::optional<FeedFetcher::Number> fetch;  ///< under way
  bool is_read = false;                      ///< whether an answer is being read

  LeftOut most_left_out = {};  ///< each since a reading had none of it

  // Of the answer that was taken up last.
  QByteArray etag;
  QByteArray last_modified;
  QByteArray digest;
};

/// An answer that has been read.
struct FeedPoller::Read {
  FeedAnswer answer;  ///< without its body
  QByteArray digest;  ///< of the body
  bool is_large = false;
  FeedReading reading;  ///< nothing when the digest is that of the last one
};

FeedPoller::FeedPoller(std::vector<Feed> feeds, Take take, WriteLog log)
    : FeedPoller(std::move(feeds), std::move(take), std::move(log), Surroundings()) {}

FeedPoller::FeedPoller(std::vector<Feed> feeds, Take take, WriteLog log, Surroundings surroundings)
    : take_(std::move(take)),
      log_(std::move(log)),
      surroundings_(std::move(surroundings)),
      fetcher_(surroundings_.limits, surroundings_.authorities) {
  if (!surroundings_.clocks)
    surroundings_.clocks = ClocksOfThisComputer;
  if (!surroundings_.random)
    surroundings_.random = RandomOfThisComputer;
  for (Feed &feed : feeds) {
    const std::string host = HostOf(feed.url);
    FeedState state;
    state.url = feed.url.section('?', 0, 0);
    state.period = feed.period;
    const FeedSchedule schedule(feed.period, milliseconds(0));
    feeds_.push_back(std::make_unique<Polled>(Polled{.feed = std::move(feed),
                                                     .host = host,
                                                     .state = std::move(state),
                                                     .schedule = schedule,
                                                     .fetch = {},
                                                     .etag = {},
                                                     .last_modified = {},
                                                     .digest = {}}));
  }
  timer_.setSingleShot(true);
  reader_.setMaxThreadCount(1);
  QObject::connect(&timer_, &QTimer::timeout, this, [this] { Look(); });
}

FeedPoller::~FeedPoller() = default;

void FeedPoller::Start() {
  if (IsRunning())
    return;
  is_running_ = true;
  ++run_;
  seen_ = surroundings_.clocks();
  if (!stopped_ || seen_.elapsed - *stopped_ >= long_stop)
    for (const std::unique_ptr<Polled> &polled : feeds_)
      polled->schedule.BeginAgain(seen_.elapsed);
  LookSoon();
}

void FeedPoller::Stop() {
  if (!IsRunning())
    return;
  is_running_ = false;
  ++run_;
  timer_.stop();
  const milliseconds now = surroundings_.clocks().elapsed;
  stopped_ = now;
  for (const std::unique_ptr<Polled> &polled : feeds_) {
    if (polled->fetch || polled->is_read)
      polled->schedule.Failed(now, FeedSchedule::Failure::NoAnswer, surroundings_.random());
    if (polled->fetch)
      fetcher_.Cancel(*std::exchange(polled->fetch, std::nullopt));
    polled->is_read = false;
  }
}

void FeedPoller::ForgetAnswers() {
  // Their lifetimes stay: until then the servers do not want to be asked.
  for (const std::unique_ptr<Polled> &polled : feeds_) {
    polled->etag.clear();
    polled->last_modified.clear();
    polled->digest.clear();
  }
}

std::vector<FeedState> FeedPoller::States() const {
  std::vector<FeedState> states;
  for (const std::unique_ptr<Polled> &polled : feeds_)
    states.push_back(polled->state);
  return states;
}

/// Asks for what is due, and looks again when something else may be.
void FeedPoller::Look() {
  const Clocks now = surroundings_.clocks();
  NoticeSleep(now);
  milliseconds wait = surroundings_.look_interval;
  for (Polled *polled : ByDue()) {
    if (polled->fetch || polled->is_read || IsHostBusy(*polled))
      continue;
    const milliseconds left = polled->schedule.Wait(now.elapsed);
    if (left == milliseconds(0))
      Ask(*polled);
    else
      wait = std::min(wait, left);
  }
  timer_.start(wait);
}

/// The feeds, that first which has been due longest: a host answers one at a time, and none may come too short.
std::vector<FeedPoller::Polled *> FeedPoller::ByDue() const {
  std::vector<Polled *> feeds;
  for (const std::unique_ptr<Polled> &polled : feeds_)
    feeds.push_back(polled.get());
  std::stable_sort(feeds.begin(), feeds.end(),
                   [](const Polled *a, const Polled *b) { return a->schedule.Due() < b->schedule.Due(); });
  return feeds;
}

void FeedPoller::LookSoon() {
  if (is_running_)
    timer_.start(0);
}

/// What was under way when the computer fell asleep has no connection any more.
void FeedPoller::NoticeSleep(const Clocks &now) {
  if (!HasSleptBetween(std::exchange(seen_, now), now))
    return;
  for (const std::unique_ptr<Polled> &polled : feeds_) {
    if (polled->fetch)
      fetcher_.Cancel(*std::exchange(polled->fetch, std::nullopt));
    polled->schedule.BeginAgain(now.elapsed);
  }
}

bool FeedPoller::IsHostBusy(const Polled &polled) const {
  return std::any_of(feeds_.begin(), feeds_.end(),
                     [&](const auto &other) { return other->fetch && other->host == polled.host; });
}

void FeedPoller::Ask(Polled &polled) {
  polled.schedule.Asked(seen_.elapsed);
  // Half of a text without an end mark would be a whole one.
  const bool has_end_mark = polled.feed.form == FeedForm::Summary;
  polled.fetch = fetcher_.Start({.url = polled.feed.url,
                                 .etag = polled.etag,
                                 .last_modified = polled.last_modified,
                                 .may_be_packed = has_end_mark},
                                [this, &polled](FeedAnswer answer) {
                                  polled.fetch.reset();
                                  OnAnswer(polled, std::move(answer));
                                  // Another feed of the host may have waited for this one.
                                  if (IsRunning())
                                    timer_.start(0);
                                });
}

void FeedPoller::OnAnswer(Polled &polled, FeedAnswer answer) {
  constexpr int ok = 200;
  constexpr int not_modified = 304;
  const bool had_condition = !polled.etag.isEmpty() || !polled.last_modified.isEmpty();
  if (!answer.fault.isEmpty())
    Fail(polled, answer, answer.fault);
  else if (answer.status == ok || SaysThereIsNothing(polled.feed, answer))
    StartReading(polled, std::move(answer));
  else if (answer.status == not_modified && had_condition)
    Succeed(polled, answer);
  else
    Fail(polled, answer, QString("answered with the status %1").arg(answer.status));
}

void FeedPoller::StartReading(Polled &polled, FeedAnswer answer) {
  polled.is_read = true;
  const auto read = std::make_shared<Read>();
  read->answer = std::move(answer);
  const qint64 now = surroundings_.clocks().of_day.count();
  reader_.start([this, &polled, read, now, last = polled.digest, form = polled.feed.form, run = run_] {
    const QByteArray body = std::exchange(read->answer.body, {});
    read->is_large = body.size() > large_text;
    read->digest = QCryptographicHash::hash(body, QCryptographicHash::Sha256);
    if (read->digest != last)
      read->reading = ReadFeedText(form, body, read->answer.made, now);
    QMetaObject::invokeMethod(
        this,
        [this, &polled, read, run] {
          if (run != run_)
            return;
          OnRead(polled, std::move(*read));
          LookSoon();
        },
        Qt::QueuedConnection);
  });
}

void FeedPoller::OnRead(Polled &polled, Read read) {
  polled.is_read = false;
  if (read.digest != polled.digest) {
    QString fault = std::move(read.reading.fault);
    const LeftOut left_out = {.all = read.reading.left_out, .nameless = read.reading.nameless};
    if (fault.isEmpty())
      fault = take_(polled.feed, std::move(read.reading));
    if (read.is_large)
      reader_.start(ReturnFreeMemory);
    if (!fault.isEmpty()) {
      read.answer.fault.clear();
      Fail(polled, read.answer, fault);
      return;
    }
    polled.digest = read.digest;
    SeeLeftOut(polled, left_out);
  }
  polled.etag = read.answer.etag;
  polled.last_modified = read.answer.last_modified;
  Succeed(polled, read.answer);
}

void FeedPoller::SeeLeftOut(Polled &polled, const LeftOut &left_out) {
  const QString &url = polled.state.url;
  polled.state.left_out = left_out.all;
  switch (ChangeOf(polled.most_left_out.all, left_out.all)) {
    case Change::Worse:
      log_(LogLevel::Warning, QString("the feed %1 has events that cannot be read: %2").arg(url).arg(left_out.all));
      break;
    case Change::Over:
      log_(LogLevel::Info, QString("all events of the feed %1 can be read again").arg(url));
      break;
    case Change::None:
      break;
  }
  if (!polled.feed.span.whole)
    return;
  switch (ChangeOf(polled.most_left_out.nameless, left_out.nameless)) {
    case Change::Worse:
      log_(LogLevel::Warning,
           QString("the feed %1 has events without an id: %2; until there are none, events that it no "
                   "longer lists are kept, since they may be among these")
               .arg(url)
               .arg(left_out.nameless));
      break;
    case Change::Over:
      log_(LogLevel::Info,
           QString("the feed %1 has no more events without an id; events that it no longer lists are removed again")
               .arg(url));
      break;
    case Change::None:
      break;
  }
}

void FeedPoller::Succeed(Polled &polled, const FeedAnswer &answer) {
  const Clocks now = surroundings_.clocks();
  polled.schedule.Succeeded(now.elapsed, answer.lifetime);
  polled.state.last_success = now.of_day.count();
  polled.state.lifetime = answer.lifetime.value_or(std::chrono::seconds(0));
  if (!std::exchange(polled.state.fault, {}).isEmpty())
    log_(LogLevel::Info, QString("the feed %1 can be used again").arg(polled.state.url));
}

void FeedPoller::Fail(Polled &polled, const FeedAnswer &answer, const QString &fault) {
  using Failure = FeedSchedule::Failure;
  const milliseconds now = surroundings_.clocks().elapsed;
  polled.schedule.Failed(now, answer.status == 0 ? Failure::NoAnswer : Failure::BadAnswer, surroundings_.random());
  if (answer.retry_after)
    LeaveAlone(polled.host, now + *answer.retry_after);
  ++polled.state.failures;
  if (std::exchange(polled.state.fault, LogText(fault)).isEmpty())
    log_(LogLevel::Warning, QString("the feed %1 cannot be used: %2").arg(polled.state.url, polled.state.fault));
}

/// The host wants no request until then, for none of its feeds.
void FeedPoller::LeaveAlone(const std::string &host, milliseconds until) {
  for (const std::unique_ptr<Polled> &polled : feeds_)
    if (polled->host == host)
      polled->schedule.LeaveAloneUntil(until);
}

}  // namespace borvane::mirror
