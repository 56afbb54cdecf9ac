#include "live/live_events.h"

#include <QDateTime>
#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace borvane::mirror {

namespace {

constexpr qint64 ms_of_hour = 60 * 60'000;
constexpr qint64 ms_of_day = 24 * ms_of_hour;

/// How far a text's time may be from the computer's clock, and how far ahead an event.
constexpr qint64 most_clock_error = ms_of_day;

/// The oldest part of a feed's span: an event of it may be absent because the feed had left it behind by then.
constexpr qint64 fading_edge = 10 * 60'000;

/// How many events of its span a feed must have had for the loss of most of them to be suspicious.
constexpr qsizetype fewest_for_suspicion = 10;

/// How long a feed has to insist that it lost most of its events. The pauses after bad answers leave it several
/// attempts. A longer time might never pass, since it begins again with each start of the mirror.
constexpr qint64 time_of_suspicion = ms_of_hour;

/// How long an event that is older than the memory's span stays after a feed has last given it.
constexpr qint64 time_after_last_seen = ms_of_day;

constexpr qsizetype most_other_ids = 20;

/// How many events are known under one other id. More would be a feed gone mad.
constexpr qsizetype most_of_other_id = 20;

constexpr qsizetype most_shared_texts = 1'000;

QString MomentText(qint64 milliseconds) {
  return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC).toString("yyyy-MM-dd HH:mm") + " UTC";
}

/// The ids of the event besides its own.
QStringList OtherIds(const FeedEvent &given) {
  QStringList others;
  for (const QString &id : given.ids)
    if (id != given.event.id && IsEventId(id) && !others.contains(id) && others.size() < most_other_ids)
      others.append(id);
  return others;
}

bool IsInSpan(const EventRecord &record, qint64 made, qint64 span) {
  return record.event.origin_time >= made - span + fading_edge && record.event.origin_time <= made;
}

}  // namespace

/// A reading that is being taken up.
struct LiveEvents::Taking {
  Known &known;
  const FeedReading &reading;
  int source = 0;
  bool is_whole = false;  ///< whether what the reading lacks goes
  qint64 made = 0;        ///< when the feed's text was
  qint64 now = 0;
  std::optional<QSet<QString>> own_ids = {};  ///< of all events of the reading, once they are asked for
  QSet<const EventRecord *> present = {};     ///< the records that a whole reading has, under whatever id
  EventChanges changes = {};

  /// Whether the id is that of an event of the reading.
  bool IsOwnId(const QString &id) {
    if (!own_ids) {
      own_ids.emplace().reserve(std::ssize(reading.events));
      for (const FeedEvent &given : reading.events)
        own_ids->insert(given.event.id);
    }
    return own_ids->contains(id);
  }

  void NotePresent(const EventRecord *record) {
    if (is_whole)
      present.insert(record);
  }

  void TakeBack(EventRecord &record) {
    record.is_gone = true;
    record.seen = std::max(record.seen, made);
    changes.records.push_back(record);
  }
};

LiveEvents::LiveEvents(std::vector<Source> sources, const MemoryLimits &limits)
    : sources_(std::move(sources)), limits_(limits), known_(sources_.size()), by_rank_(sources_.size()) {
  std::iota(by_rank_.begin(), by_rank_.end(), 0);
  std::stable_sort(by_rank_.begin(), by_rank_.end(), [this](int a, int b) {
    return sources_[static_cast<std::size_t>(a)].rank > sources_[static_cast<std::size_t>(b)].rank;
  });
}

EventChanges LiveEvents::Take(int source, const FeedSpan &span, const FeedReading &reading, qint64 now) {
  Known &known = known_.at(static_cast<std::size_t>(source));
  const QString fault = FaultOf(known, span, reading, now);
  if (!fault.isEmpty())
    return {.fault = fault, .records = {}};

  Taking taking = {.known = known,
                   .reading = reading,
                   .source = source,
                   .is_whole = span.whole.has_value(),
                   .made = reading.generated == 0 ? now : reading.generated,
                   .now = now};
  for (const FeedEvent &given : reading.events)
    TakeEvent(taking, given);
  if (span.whole)
    TakeBackAbsentEvents(taking, span);
  Prune(now);
  return std::move(taking.changes);
}

QString LiveEvents::FaultOf(Known &known, const FeedSpan &span, const FeedReading &reading, qint64 now) {
  if (!reading.fault.isEmpty())
    return reading.fault;
  if (reading.generated != 0 && std::abs(reading.generated - now) > most_clock_error)
    return QString("it was made at %1, and this computer's clock says %2")
        .arg(MomentText(reading.generated), MomentText(now));
  const auto lies_ahead = [now](const FeedEvent &given) { return given.event.origin_time > now + most_clock_error; };
  const auto ahead = std::count_if(reading.events.begin(), reading.events.end(), lies_ahead);
  if (2 * ahead > std::ssize(reading.events))
    return QString("%1 of its %2 events lie in the future").arg(ahead).arg(reading.events.size());
  return span.whole ? LossOf(known, span, reading, now) : QString();
}

QString LiveEvents::LossOf(Known &known, const FeedSpan &span, const FeedReading &reading, qint64 now) {
  const qint64 made = reading.generated == 0 ? now : reading.generated;
  const qint64 length = std::chrono::milliseconds(*span.whole).count();
  const auto is_expected = [&](const auto &entry) {
    return !entry.second.is_gone && IsInSpan(entry.second, made, length);
  };
  const auto expected = std::count_if(known.records.begin(), known.records.end(), is_expected);
  const auto given = reading.left_out + std::count_if(reading.events.begin(), reading.events.end(),
                                                      [](const FeedEvent &event) { return !event.deleted; });
  if (expected < fewest_for_suspicion || 2 * given >= expected) {
    known.few_since.erase(length);
    return {};
  }
  const qint64 since = known.few_since.try_emplace(length, now).first->second;
  if (now - since >= time_of_suspicion) {
    known.few_since.erase(length);
    return {};
  }
  return QString("it has only %1 events, while %2 are known of its span").arg(given).arg(expected);
}

std::vector<EventRecord *> LiveEvents::Matches(Taking &taking, const FeedEvent &given, const QStringList &other_ids) {
  std::vector<EventRecord *> matches;
  const auto add = [&](const QString &id) {
    const auto found = taking.known.records.find(id);
    if (found != taking.known.records.end() &&
        std::find(matches.begin(), matches.end(), &found->second) == matches.end())
      matches.push_back(&found->second);
  };
  add(given.event.id);
  // What the reading gives as an event of its own is none of this one's.
  for (const QString &id : other_ids)
    if (!taking.IsOwnId(id))
      add(id);
  const auto [first, last] = std::as_const(taking.known.by_other_id).equal_range(given.event.id);
  for (auto id = first; id != last; ++id)
    if (!taking.IsOwnId(*id))
      add(*id);
  return matches;
}

void LiveEvents::TakeEvent(Taking &taking, const FeedEvent &given) {
  const QStringList other_ids = OtherIds(given);
  const std::vector<EventRecord *> matches = Matches(taking, given, other_ids);
  if (given.deleted) {
    for (EventRecord *match : matches)
      if (!match->is_gone && match->seen <= taking.made)
        taking.TakeBack(*match);
    return;
  }
  if (given.event.origin_time > taking.now + most_clock_error)
    return;

  // A revision cannot be later than the text that has it. One that claims to be would never be replaced.
  const qint64 updated = std::min(given.updated, taking.made);
  bool is_old = false;
  qint64 seen = taking.made;
  for (EventRecord *match : matches) {
    if (match->is_gone) {
      is_old = is_old || (match->event.id == given.event.id && taking.made <= match->seen);
      continue;
    }
    is_old = is_old || updated < match->event.updated || (updated == match->event.updated && taking.made < match->seen);
    match->seen = std::max(match->seen, taking.made);
    seen = std::max(seen, match->seen);
    taking.NotePresent(match);
  }
  if (is_old)
    return;

  for (EventRecord *match : matches)
    if (!match->is_gone && match->event.id != given.event.id)
      taking.TakeBack(*match);
  EventRecord record = {.source = taking.source, .event = given.event, .other_ids = other_ids, .seen = seen};
  record.event.updated = updated;
  record.event.credit = sources_[static_cast<std::size_t>(taking.source)].credit;
  // The record of that very id comes first.
  if (!matches.empty() && *matches.front() == record)
    return;
  record.event.network = Shared(given.event.network);
  record.event.kind = Shared(given.event.kind);
  taking.changes.records.push_back(record);
  taking.NotePresent(Put(taking.known, std::move(record)));
}

void LiveEvents::TakeBackAbsentEvents(Taking &taking, const FeedSpan &span) {
  // An event without an id may be any of them.
  if (taking.reading.nameless > 0)
    return;
  for (const QString &id : taking.reading.unread_ids) {
    if (const auto found = taking.known.records.find(id); found != taking.known.records.end())
      taking.NotePresent(&found->second);
    for (const QString &preferred : taking.known.by_other_id.values(id))
      taking.NotePresent(&taking.known.records.at(preferred));
  }
  const qint64 length = std::chrono::milliseconds(*span.whole).count();
  for (auto &[id, record] : taking.known.records)
    if (!record.is_gone && record.seen < taking.made && IsInSpan(record, taking.made, length) &&
        !taking.present.contains(&record))
      taking.TakeBack(record);
}

bool LiveEvents::Restore(std::vector<EventRecord> records, qint64 now) {
  bool is_new = false;
  for (EventRecord &record : records) {
    Known &known = known_.at(static_cast<std::size_t>(record.source));
    const auto found = known.records.find(record.event.id);
    record.event.credit = sources_[static_cast<std::size_t>(record.source)].credit;
    if (found != known.records.end()) {
      // A store has no note of the texts that have only confirmed an event since.
      const qint64 seen = std::exchange(found->second.seen, record.seen);
      if (found->second == record) {
        found->second.seen = std::max(seen, record.seen);
        continue;
      }
    }
    is_new = true;
    record.event.network = Shared(record.event.network);
    record.event.kind = Shared(record.event.kind);
    Put(known, std::move(record));
  }
  Prune(now);
  return is_new;
}

std::vector<EventRecord> LiveEvents::Records() const {
  std::vector<EventRecord> records;
  for (const Known &known : known_)
    for (const auto &[id, record] : known.records)
      records.push_back(record);
  return records;
}

std::shared_ptr<const Catalogue> LiveEvents::Shown(qint64 now, int days, const QStringList &kinds) const {
  // The double of an event at the edge may lie on its other side.
  const qint64 since = now - days * ms_of_day;
  constexpr qint64 edge = 60'000;
  const MergedEvents merged = MergeSources(PresentSince(since - edge));

  ShownIds ids;
  std::vector<Event> shown = EventsOf(merged, since, ids);
  const bool lists_all = kinds.contains("all");
  for (Event &event : shown)
    event.is_listed = lists_all || kinds.contains(event.kind.isEmpty() ? QString("earthquake") : event.kind);
  return std::make_shared<const Catalogue>(std::move(shown), OtherIdsOf(ids));
}

/// The events of each source since then, the source of the highest rank first, without those that are gone.
std::vector<std::vector<const Event *>> LiveEvents::PresentSince(qint64 since) const {
  std::vector<std::vector<const Event *>> sources;
  for (const int source : by_rank_) {
    std::vector<const Event *> &events = sources.emplace_back();
    for (const auto &[id, record] : known_[static_cast<std::size_t>(source)].records)
      if (!record.is_gone && record.event.origin_time >= since)
        events.push_back(&record.event);
  }
  return sources;
}

/// The merged events since then under the ids under which they are shown, newest first. These are noted in `ids`, for
/// the doubles as well.
std::vector<Event> LiveEvents::EventsOf(const MergedEvents &merged, qint64 since, ShownIds &ids) const {
  std::vector<std::pair<const Event *, QString>> named;
  named.reserve(merged.shown.size());
  ids.reserve(std::ssize(merged.shown) + std::ssize(merged.doubles));
  QSet<QString> taken;
  for (const Event *event : merged.shown) {
    if (event->origin_time < since)
      continue;
    const auto &[shown, id] = named.emplace_back(event, taken.contains(event->id) ? IdBesideOthers(*event) : event->id);
    ids.insert(shown, id);
    // Of one source no two events have the same id.
    if (known_.size() > 1)
      taken.insert(id);
  }
  for (const auto &[other, event] : merged.doubles)
    if (ids.contains(event))
      ids.insert(other, ids.value(event));

  std::stable_sort(named.begin(), named.end(),
                   [](const auto &a, const auto &b) { return a.first->origin_time > b.first->origin_time; });
  std::vector<Event> shown;
  shown.reserve(named.size());
  for (const auto &[event, id] : named)
    shown.emplace_back(*event).id = id;
  return shown;
}

/// All ids under which the sources know the events that are shown under `ids`, those of the highest rank first.
std::vector<OtherId> LiveEvents::OtherIdsOf(const ShownIds &ids) const {
  std::vector<OtherId> other_ids;
  for (const int source : by_rank_)
    for (const auto &[id, record] : known_[static_cast<std::size_t>(source)].records)
      if (const auto found = ids.find(&record.event); found != ids.end()) {
        if (id != *found)
          other_ids.push_back({.id = id, .event = *found});
        for (const QString &other : record.other_ids)
          other_ids.push_back({.id = other, .event = *found});
      }
  return other_ids;
}

/// The id of an event that is not the one which another source calls so: its source's name before its own.
QString LiveEvents::IdBesideOthers(const Event &event) const {
  constexpr qsizetype longest = 64;
  QString name;
  for (std::size_t source = 0; source < known_.size(); ++source) {
    const auto found = known_[source].records.find(event.id);
    if (found != known_[source].records.end() && &found->second.event == &event)
      name = sources_[source].name;
  }
  name.removeIf([](QChar c) { return !IsEventId(c); });
  return QString(name + '-' + event.id).right(longest);
}

const EventRecord *LiveEvents::Put(Known &known, EventRecord record) {
  const QString id = record.event.id;
  EventRecord &place = known.records[id];
  for (const QString &other : place.other_ids)
    known.by_other_id.remove(other, id);
  for (const QString &other : record.other_ids)
    if (known.by_other_id.count(other) < most_of_other_id)
      known.by_other_id.insert(other, id);
  place = std::move(record);
  return &place;
}

void LiveEvents::Prune(qint64 now) {
  const qint64 since = now - std::chrono::milliseconds(limits_.span).count();
  const auto is_old = [&](const EventRecord &record) {
    return record.event.origin_time < since && record.seen < now - time_after_last_seen;
  };
  const bool is_time = std::abs(now - pruned_) >= ms_of_hour;
  if (is_time)
    pruned_ = now;
  for (Known &known : known_) {
    if (is_time)
      EraseIf(known, is_old);
    if (known.records.size() <= limits_.most_records)
      continue;
    std::vector<qint64> times;
    for (const auto &[id, record] : known.records)
      times.push_back(record.event.origin_time);
    const auto newest_that_goes = times.end() - static_cast<std::ptrdiff_t>(limits_.most_records) - 1;
    std::nth_element(times.begin(), newest_that_goes, times.end());
    EraseIf(known, [last = *newest_that_goes](const EventRecord &record) { return record.event.origin_time <= last; });
  }
}

void LiveEvents::EraseIf(Known &known, const std::function<bool(const EventRecord &)> &is_out) {
  for (auto entry = known.records.begin(); entry != known.records.end();) {
    if (!is_out(entry->second)) {
      ++entry;
      continue;
    }
    for (const QString &other : entry->second.other_ids)
      known.by_other_id.remove(other, entry->first);
    entry = known.records.erase(entry);
  }
}

QString LiveEvents::Shared(const QString &text) {
  if (shared_texts_.size() >= most_shared_texts)
    shared_texts_.clear();
  return *shared_texts_.insert(text);
}

}  // namespace borvane::mirror
