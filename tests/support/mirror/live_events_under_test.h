#pragma once

#include <QStringList>
#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "live/live_events.h"
#include "support/mirror/feed_samples.h"

namespace borvane::mirror {

/// The events of two sources, and a clock that the test moves.
class LiveEventsTest : public testing::Test {
 protected:
  EventChanges Take(std::vector<FeedEvent> events, const FeedSpan &span = Recent()) {
    return TakeMadeAt(now_, std::move(events), span);
  }
  EventChanges TakeMadeAt(qint64 made, std::vector<FeedEvent> events, const FeedSpan &span = Recent()) {
    return events_.Take(0, span, ReadingOf(std::move(events), made), now_);
  }
  EventChanges TakeFromCentre(std::vector<FeedEvent> events) {
    return events_.Take(1, Recent(), ReadingOf(std::move(events), now_), now_);
  }
  void PassMinute() { now_ += one_minute; }

  std::shared_ptr<const Catalogue> Shown(int days = 7) const { return events_.Shown(now_, days, {"earthquake"}); }
  /// The ids of what is shown, newest first.
  QStringList Ids(int days = 7) const {
    QStringList ids;
    const std::shared_ptr<const Catalogue> shown = Shown(days);
    for (const Event &event : shown->events())
      ids.append(event.id);
    return ids;
  }
  /// The magnitude of the shown event of that id; -99 when none is shown.
  double Magnitude(const QString &id) const {
    const std::shared_ptr<const Catalogue> shown = Shown();
    const Event *event = shown->Find(id);
    return event != nullptr ? event->magnitude.value() : -99;
  }
  /// The ids of the records, those that are gone with a "-".
  static QStringList IdsOf(const EventChanges &changes) {
    QStringList ids;
    for (const EventRecord &record : changes.records)
      ids.append((record.is_gone ? "-" : "") + record.event.id);
    return ids;
  }

  qint64 now_ = start_of_test;
  LiveEvents events_{TwoSources()};
};

/// `count` events of the last hours.
inline std::vector<FeedEvent> Several(int count) {
  std::vector<FeedEvent> events;
  for (int i = 0; i < count; ++i)
    events.push_back(GivenAt(QString("ci%1").arg(i), start_of_test - one_hour - i * one_minute));
  return events;
}

}  // namespace borvane::mirror
