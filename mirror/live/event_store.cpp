#include "live/event_store.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFileInfo>
#include <QThread>
#include <algorithm>
#include <map>
#include <set>
#include <span>
#include <utility>

namespace borvane::mirror {

namespace {

/// How long a job may take until the store counts as silent. A whole week's feed over a slow line is one job.
constexpr int store_timeout_ms = 20'000;

/// How far ahead of the clock a stored time may be. What is further comes from a clock that was wrong, and would outdo
/// all that comes.
constexpr qint64 most_ahead = 24 * 60 * 60'000;

/// How many records one transaction writes when all that is known is written: these may be too many to be written
/// before the store counts as silent.
constexpr std::size_t records_of_transaction = 5'000;

/// The lock that a server's session holds whose mirror leads: two numbers of our own.
constexpr const char *leader_lock = "1651470966, 1";

/// After how much silence the server ends the leader's session, and with it the lock. The leader asks each second.
constexpr const char *longest_silence = "30000";

/// Whether this session holds the leader's lock, by now.
bool TakesTheLead(Database &database) {
  constexpr int has_begun = 1;
  const int state =
      database
          .Row(QString("select case when exists (select 1 from pg_locks where locktype = 'advisory' and granted and "
                       "pid = pg_backend_pid() and (classid::bigint, objid::bigint, objsubid) = (%1, 2)) then 2 "
                       "when pg_try_advisory_lock(%1) then 1 else 0 end")
                   .arg(leader_lock))
          .at(0)
          .toInt();
  // Servers before version 14 lack it; there a mirror that is frozen goes on to lead.
  if (state == has_begun)
    database.Run(QString("select set_config(name, '%1', false) from pg_settings where name = 'idle_session_timeout'")
                     .arg(longest_silence));
  return state != 0;
}

/// Lets events run until it is so, or the time is up.
bool RunUntil(const std::function<bool()> &is_so, int milliseconds) {
  QTimer end;
  end.setSingleShot(true);
  end.start(milliseconds);
  QEventLoop loop;
  while (!is_so() && end.isActive())
    loop.processEvents(QEventLoop::WaitForMoreEvents);
  return is_so();
}

/// A record's source and id.
using Key = std::pair<int, QString>;

Key KeyOf(const EventRecord &record) { return {record.source, record.event.id}; }

/// The records by their keys; of several with one key the last.
std::vector<EventRecord> EachOnce(const std::vector<EventRecord> &records) {
  std::map<Key, const EventRecord *> last;
  for (const EventRecord &record : records)
    last[KeyOf(record)] = &record;
  std::vector<EventRecord> result;
  result.reserve(last.size());
  for (const auto &[key, record] : last)
    result.push_back(*record);
  return result;
}

/// The records, in parts that can each be written in one transaction in time.
std::vector<std::vector<EventRecord>> PartsOf(const std::vector<EventRecord> &records) {
  std::vector<std::vector<EventRecord>> parts;
  for (std::span<const EventRecord> rest = records; !rest.empty();) {
    const auto part = rest.first(std::min(rest.size(), records_of_transaction));
    parts.emplace_back(part.begin(), part.end());
    rest = rest.subspan(part.size());
  }
  return parts;
}

}  // namespace

StoreAddress EventStoreAddress(const StoreAddress &service) {
  StoreAddress address = service;
  address.schema = "borvane_events";
  if (service.IsFile()) {
    const QFileInfo file(service.file);
    address.file = file.path() + '/' + file.completeBaseName() + "-events.sqlite";
  }
  return address;
}

EventStore::EventStore(const StoreAddress &address, QStringList sources, Settings settings, Callbacks callbacks)
    : name_(address.Text()),
      sources_(std::move(sources)),
      settings_(std::move(settings)),
      callbacks_(std::move(callbacks)),
      is_shared_(!address.IsFile()),
      store_(address, events_schema, callbacks_.log, store_timeout_ms) {
  for (QTimer *timer : {&retry_timer_, &takeover_timer_})
    timer->setSingleShot(true);
  look_timer_.setInterval(settings_.timing.look_interval);
  retry_timer_.setInterval(settings_.timing.retry_interval);
  takeover_timer_.setInterval(settings_.timing.takeover_timeout);
  connect(&look_timer_, &QTimer::timeout, this, [this] { Look(); });
  connect(&retry_timer_, &QTimer::timeout, this, [this] {
    if (!is_complete_ || !can_read_)
      Read();
    // What has failed while nothing waits is the deletion of what is too old.
    if (!can_write_ && !under_way_ && waiting_.empty())
      Retain();
    WriteWhatWaits();
  });
  connect(&takeover_timer_, &QTimer::timeout, this, [this] { Lead(true); });
}

void EventStore::Start(std::chrono::milliseconds span) {
  span_ = span;
  look_timer_.start();
  if (is_shared_)
    takeover_timer_.start();
  Read();
}

/// Looks for other mirrors' changes, and for a clock that was set back.
void EventStore::Look() {
  NoteTime();
  if (is_shared_ || (!is_complete_ && !retry_timer_.isActive()))
    Read();
}

/// What was read by a clock that was ahead lacks events that are not so old.
void EventStore::NoteTime() {
  const qint64 now = settings_.clock();
  if (now < time_)
    is_complete_ = false;
  time_ = now;
}

void EventStore::Read() {
  NoteTime();
  if (is_reading_)
    return;
  is_reading_ = true;
  const bool reads_all = !std::exchange(is_complete_, true);
  const auto found = std::make_shared<Found>();
  const qint64 since = time_ - span_.count();
  const auto work = [found, since, number = number_, identity = identity_, reads_all, sources = sources_,
                     is_shared = is_shared_](Database &database) {
    *found = {};
    found->leads = !is_shared || TakesTheLead(database);
    found->state = ReadState(database);
    found->exists = true;
    if (reads_all || found->state.identity != identity)
      found->records = ReadRecords(database, QueryOfEventsSince(), {since}, sources);
    else if (found->state.number != number)
      found->records = ReadRecords(database, QueryOfChangesAfter(), {number, since}, sources);
    return QByteArray("read");
  };
  store_.Submit(Access::Read, work, [this, found, reads_all](const std::optional<QByteArray> &result) {
    is_reading_ = false;
    if (!result && reads_all)
      is_complete_ = false;
    OnOutcome(Access::Read, result.has_value());
    OnRead(result.has_value(), *found);
  });
}

void EventStore::OnRead(bool has_worked, Found &found) {
  if (!has_worked) {
    if (!is_shared_)
      Lead(true);
    return;
  }
  // Who does not lead any more asks for nothing when it learns what the next leader has written.
  if (!found.leads)
    Lead(false);
  const bool is_first = !is_read_;
  const bool is_another = identity_ && found.exists && *identity_ != found.state.identity;
  if (found.exists)
    LogAnother(found.state);
  is_read_ = true;
  // What is dropped here is read again after the write.
  const bool has_all = !DropUnwritten(found.records);
  if (found.exists) {
    number_ = has_all ? found.state.number : is_another ? -1 : number_;
    identity_ = found.state.identity;
  }

  const qint64 now = settings_.clock();
  for (EventRecord &record : found.records)
    if (record.seen > now + most_ahead)
      record.seen = now;
  qint64 time_of_data = found.state.time_of_data;
  if (time_of_data > now + most_ahead)
    time_of_data = is_first ? now : 0;
  if (is_first || !found.records.empty() || time_of_data > time_of_data_) {
    time_of_data_ = std::max(time_of_data_, time_of_data);
    callbacks_.take(std::move(found.records), time_of_data);
  }
  if (is_another)
    for (const std::vector<EventRecord> &part : PartsOf(callbacks_.everything()))
      Write(part, time_of_data_);
  takeover_timer_.stop();
  Lead(found.leads);
}

/// Logs once that there is another store under the name. One without a change was made by what has found it.
void EventStore::LogAnother(const EventsState &state) {
  if (!identity_ || *identity_ == state.identity || logged_ == state.identity)
    return;
  logged_ = state.identity;
  callbacks_.log(
      LogLevel::Warning,
      name_ + (state.number == 0 ? " was removed: the events in memory are still served, and are written to a "
                                   "new one; what was older is lost"
                                 : " was replaced: the events of the new store are served as well from now on, "
                                   "and the events in memory are written to it"));
}

/// Removes the records that are to be written over. Returns whether there were any.
bool EventStore::DropUnwritten(std::vector<EventRecord> &records) const {
  if (records.empty() || unwritten_ == 0)
    return false;
  std::set<Key> unwritten;
  const auto add = [&unwritten](const Batch &batch) {
    for (const EventRecord &record : batch.records)
      unwritten.insert(KeyOf(record));
  };
  if (under_way_)
    add(*under_way_);
  for (const auto &batch : waiting_)
    add(*batch);
  return std::erase_if(records, [&](const EventRecord &record) { return unwritten.contains(KeyOf(record)); }) > 0;
}

void EventStore::Write(const std::vector<EventRecord> &records, qint64 time_of_data) {
  const bool is_later = time_of_data > time_of_data_;
  time_of_data_ = std::max(time_of_data_, time_of_data);
  if (records.empty() && !is_later)
    return;
  Batch batch = {.records = EachOnce(records), .time_of_data = time_of_data_};
  // A time alone makes no transaction where there is another one.
  if (batch.records.empty() && !waiting_.empty()) {
    batch.records = waiting_.back()->records;
    unwritten_ -= batch.records.size();
    waiting_.pop_back();
  }
  unwritten_ += batch.records.size();
  waiting_.push_back(std::make_shared<const Batch>(std::move(batch)));
  if (unwritten_ > settings_.retention.unwritten)
    GiveUpSome();
  if (!retry_timer_.isActive())
    WriteWhatWaits();
}

/// Keeps of all that wait the last state of each event. If that is still more than half of what may wait,
/// the oldest events go.
void EventStore::GiveUpSome() {
  std::vector<EventRecord> records;
  for (const auto &batch : waiting_)
    records.insert(records.end(), batch->records.begin(), batch->records.end());
  records = EachOnce(records);
  const std::size_t most = settings_.retention.unwritten / 2;
  if (records.size() > most) {
    const auto is_newer = [](const EventRecord &a, const EventRecord &b) {
      return a.event.origin_time > b.event.origin_time;
    };
    std::nth_element(records.begin(), records.begin() + static_cast<std::ptrdiff_t>(most), records.end(), is_newer);
    records.resize(most);
    records = EachOnce(records);
  }
  unwritten_ = records.size() + (under_way_ ? under_way_->records.size() : 0);
  waiting_.clear();
  for (std::vector<EventRecord> &part : PartsOf(records))
    waiting_.push_back(std::make_shared<const Batch>(Batch{.records = std::move(part), .time_of_data = time_of_data_}));
}

void EventStore::WriteWhatWaits() {
  if (under_way_ || waiting_.empty())
    return;
  under_way_ = waiting_.front();
  waiting_.pop_front();

  const auto found = std::make_shared<Found>();
  const auto work = [batch = under_way_, found, latest = settings_.clock() + most_ahead,
                     sources = sources_](Database &database) {
    *found = {.exists = true, .state = ReadState(database)};
    const qint64 number = found->state.number + 1;
    database.Run(
        "update state set number = ?, "
        "time_of_data = case when time_of_data < ? or time_of_data > ? then ? else time_of_data end",
        {number, batch->time_of_data, latest, batch->time_of_data});
    for (qsizetype source = 0; source < sources.size(); ++source) {
      std::vector<const EventRecord *> of_source;
      for (const EventRecord &record : batch->records)
        if (record.source == source)
          of_source.push_back(&record);
      PutRecords(database, sources[source].toUtf8(), of_source, number, latest);
    }
    return QByteArray("written");
  };
  store_.Submit(Access::Write, work, [this, found](const std::optional<QByteArray> &result) {
    const std::shared_ptr<const Batch> batch = std::exchange(under_way_, nullptr);
    OnOutcome(Access::Write, result.has_value());
    if (result) {
      unwritten_ -= batch->records.size();
      changes_until_check_ -= static_cast<int>(batch->records.size());
      OnWritten(*found);
    } else {
      waiting_.push_front(batch);
    }
  });
}

void EventStore::OnWritten(const Found &found) {
  const EventsState &state = found.state;
  const bool is_as_known = identity_ ? *identity_ == state.identity && number_ == state.number : state.number == 0;
  if (is_as_known) {
    identity_ = state.identity;
    number_ = state.number + 1;
  } else {
    // Another mirror has written, or this is another store.
    LogAnother(state);
    Read();
  }
  if (waiting_.empty())
    Retain();
  WriteWhatWaits();
}

/// Deletes what is not to be kept, a portion at a time. What fails here is tried again.
void EventStore::Retain() {
  if (is_retaining_)
    return;
  is_retaining_ = true;
  const bool counts = changes_until_check_ <= 0;
  const auto work = [retention = settings_.retention, counts, now = settings_.clock()](Database &database) {
    // By a clock that is years ahead everything would be too old; the feeds know better.
    const qint64 newest = ReadState(database).time_of_data;
    return QByteArray(DeleteSome(database, retention, std::min(now, newest), counts) ? "more" : "done");
  };
  store_.Submit(Access::Write, work, [this, counts](const std::optional<QByteArray> &result) {
    is_retaining_ = false;
    OnOutcome(Access::Write, result.has_value());
    if (result == "more")
      Retain();
    else if (result && counts)
      changes_until_check_ = settings_.retention.changes_between_checks;
  });
}

void EventStore::OnOutcome(Access access, bool has_worked) {
  if (access == Access::Write)
    can_write_ = has_worked;
  // A store that can be written can be read.
  if (access == Access::Read || has_worked)
    can_read_ = has_worked;
  if (has_worked)
    return;
  retry_timer_.start();
  // A leader goes on to lead.
  if (is_shared_ && !leads_.value_or(false) && !takeover_timer_.isActive())
    takeover_timer_.start();
}

void EventStore::Lead(bool leads) {
  if (leads_ == leads)
    return;
  leads_ = leads;
  callbacks_.lead(leads);
}

bool EventStore::WaitUntilRead(int milliseconds) const {
  // The thread's results are posted. Sockets wait: a page that is asked for meanwhile is to have the events.
  for (const QDeadlineTimer deadline(milliseconds); !is_read_ && can_read_ && !deadline.hasExpired();
       QThread::msleep(1))
    QCoreApplication::sendPostedEvents();
  return is_read_;
}

bool EventStore::WaitUntilWritten(int milliseconds) const {
  return RunUntil([this] { return waiting_.empty() && !under_way_; }, milliseconds);
}

}  // namespace borvane::mirror
