#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "catalogue/catalogue.h"
#include "feeds/feed.h"
#include "feeds/feed_reading.h"
#include "live/event_record.h"
#include "live/source_merge.h"

namespace borvane::mirror {

/// What came of taking up a reading.
struct EventChanges {
  QString fault;                     ///< why the reading was refused, whole; empty when it was taken up
  std::vector<EventRecord> records;  ///< what is new, revised or gone, in its new state
};

/// How much of the past is in memory.
struct MemoryLimits {
  std::chrono::hours span{24 * 8};     ///< back from now; an event that a feed still gives is kept for longer
  std::size_t most_records = 200'000;  ///< of each source; the oldest events go first
};

/// The events of all sources as the feeds have given them. It keeps no clock: the caller passes the time, in
/// milliseconds since 1970 UTC.
///
/// What is known of an event is what its newest revision says; of two that were revised at the same time, what the
/// later text says. A text that comes late, as from a cache, undoes nothing that a later one has done.
class LiveEvents {
 public:
  explicit LiveEvents(std::vector<Source> sources, const MemoryLimits &limits = {});

  /// Takes up a reading of a feed of `source`. An event is new, or revises the one that the source knows under one of
  /// its ids. One that the source calls deleted goes, and so does one that a feed of a whole span no longer has, but
  /// not one that it has and that could not be read.
  ///
  /// Refused, with a fault, is a reading that was made more than a day from now, one whose events lie for the most part
  /// in the future, and one of a whole span that has lost more than half of its events since the last one. If a feed
  /// goes on having so few for an hour, it is believed.
  EventChanges Take(int source, const FeedSpan &span, const FeedReading &reading, qint64 now);

  /// Takes up what a store has, which is believed: it is what several mirrors share. Returns whether anything of it was
  /// new.
  bool Restore(std::vector<EventRecord> records, qint64 now);

  /// All that is known, with what is gone.
  std::vector<EventRecord> Records() const;

  /// The events of the last `days`. Of those that several sources report, the one of the source of the highest rank;
  /// see MergeSources. Those of other kinds than `kinds` are not listed; an event of no known kind counts as an
  /// earthquake, and "all" names every kind. An event is found under its other ids as well, and under those that other
  /// sources have for it.
  std::shared_ptr<const Catalogue> Shown(qint64 now, int days, const QStringList &kinds) const;

 private:
  /// One source's records, by the ids that it prefers.
  struct Known {
    std::map<QString, EventRecord> records;
    QMultiHash<QString, QString> by_other_id;  ///< the preferred ids of the records that have that other id
    /// Since when a feed of that span, in milliseconds, has lost most of its events.
    std::map<qint64, qint64> few_since;
  };
  struct Taking;
  using ShownIds = QHash<const Event *, QString>;  ///< under which id an event is shown, or the one that it is

  static QString FaultOf(Known &known, const FeedSpan &span, const FeedReading &reading, qint64 now);
  static QString LossOf(Known &known, const FeedSpan &span, const FeedReading &reading, qint64 now);
  static std::vector<EventRecord *> Matches(Taking &taking, const FeedEvent &given, const QStringList &other_ids);
  void TakeEvent(Taking &taking, const FeedEvent &given);
  static void TakeBackAbsentEvents(Taking &taking, const FeedSpan &span);
  static const EventRecord *Put(Known &known, EventRecord record);
  void Prune(qint64 now);
  static void EraseIf(Known &known, const std::function<bool(const EventRecord &)> &is_out);
  std::vector<std::vector<const Event *>> PresentSince(qint64 since) const;
  std::vector<Event> EventsOf(const MergedEvents &merged, qint64 since, ShownIds &ids) const;
  std::vector<OtherId> OtherIdsOf(const ShownIds &ids) const;
  QString IdBesideOthers(const Event &event) const;
  QString Shared(const QString &text);

  const std::vector<Source> sources_;
  const MemoryLimits limits_;
  std::vector<Known> known_;    ///< in the order of the sources
  std::vector<int> by_rank_;    ///< the sources, highest rank first
  QSet<QString> shared_texts_;  ///< networks and kinds, which many events have in common
  qint64 pruned_ = 0;
};

}  // namespace borvane::mirror
