#include "live/live_catalogue.h"

#include <algorithm>
#include <limits>

#include "catalogue/free_memory.h"

namespace borvane::mirror {

namespace {

/// Events are kept in memory for a day longer than they are shown or a feed may take them back.
constexpr std::chrono::hours spare_time(24);

/// From how many events on the memory that a reading took is worth giving back.
constexpr std::size_t many_events = 2'000;

constexpr qint64 ms_of_shown_day = 24 * 60 * 60'000;

QStringList NamesOf(const std::vector<Source> &sources) {
  QStringList names;
  for (const Source &source : sources)
    names.append(source.name);
  return names;
}

}  // namespace

LiveCatalogue::LiveCatalogue(Settings settings, Callbacks callbacks)
    : settings_(std::move(settings)),
      callbacks_(std::move(callbacks)),
      events_(settings_.sources, {.span = std::chrono::duration_cast<std::chrono::hours>(SpanInMemory())}),
      store_(EventStoreAddress(settings_.store), NamesOf(settings_.sources),
             {.retention = settings_.retention, .timing = settings_.timing, .clock = settings_.clock},
             {.take = [this](std::vector<EventRecord> records,
                             qint64 time_of_data) { OnStored(std::move(records), time_of_data); },
              .everything = [this] { return events_.Records(); },
              .lead = callbacks_.may_poll,
              .log = [log = callbacks_.log](LogLevel level,
                                            const QString &line) { log(level, "the events' store " + line); }}) {
  connect(&aging_timer_, &QTimer::timeout, this, [this] { PublishAged(); });
}

std::chrono::milliseconds LiveCatalogue::SpanInMemory() const {
  std::chrono::seconds span = std::chrono::hours(24) * settings_.days_shown;
  for (const Feed &feed : settings_.feeds)
    span = std::max(span, feed.span.whole.value_or(std::chrono::seconds(0)));
  return span + spare_time;
}

void LiveCatalogue::Start(int milliseconds) {
  aging_timer_.start(settings_.aging_interval);
  store_.Start(SpanInMemory());
  store_.WaitUntilRead(milliseconds);
}

QString LiveCatalogue::Take(const Feed &feed, const FeedReading &reading) {
  const qint64 now = settings_.clock();
  const EventChanges changes = events_.Take(feed.source, feed.span, reading, now);
  if (!changes.fault.isEmpty())
    return changes.fault;
  time_of_data_ = std::max(time_of_data_, reading.generated == 0 ? now : reading.generated);
  if (!changes.records.empty() || !has_events_)
    Publish();
  store_.Write(changes.records, time_of_data_);
  if (reading.events.size() >= many_events)
    ReturnFreeMemory();
  return {};
}

bool LiveCatalogue::Show(int days, const QStringList &kinds) {
  settings_.days_shown = days;
  settings_.kinds_listed = kinds;
  if (has_events_)
    Publish();
  return has_events_;
}

void LiveCatalogue::OnStored(std::vector<EventRecord> records, qint64 time_of_data) {
  const bool is_later = time_of_data > time_of_data_;
  time_of_data_ = std::max(time_of_data_, time_of_data);
  // A store in which no feed was ever taken up is no reason to show nothing.
  const bool is_new = events_.Restore(std::move(records), settings_.clock());
  if (is_new)
    callbacks_.restored();
  if (is_new || is_later)
    Publish();
}

void LiveCatalogue::Publish() {
  has_events_ = true;
  published_ = settings_.clock();
  const std::shared_ptr<const Catalogue> shown =
      events_.Shown(published_, settings_.days_shown, settings_.kinds_listed);
  events_served_ = shown->events().size();
  oldest_served_ = shown->events().empty() ? std::numeric_limits<qint64>::max() : shown->events().back().origin_time;
  callbacks_.changed(shown);
}

void LiveCatalogue::PublishAged() {
  const qint64 now = settings_.clock();
  // A clock that was ahead has hidden what is to be shown.
  if (has_events_ && (now < published_ || oldest_served_ < now - settings_.days_shown * ms_of_shown_day))
    Publish();
}

}  // namespace borvane::mirror
