#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "catalogue/event.h"

namespace borvane::mirror {

/// No feed may have more events: the memory that a reader takes has to have a bound. A month of the whole world has
/// 10,000 to 20,000.
constexpr int most_feed_events = 50'000;

/// An event as a feed gives it.
struct FeedEvent {
  Event event;         ///< of a deleted event only the id counts
  qint64 updated = 0;  ///< when it was last revised, in milliseconds since 1970 UTC; 0 if the form does not say
  QStringList ids;     ///< all ids under which it is known, its own first
  bool deleted = false;
};

/// What came of reading a feed's text.
struct FeedReading {
  qint64 generated = 0;  ///< when the text was made, in milliseconds since 1970 UTC; 0 if the form does not say
  std::vector<FeedEvent> events;  ///< in the order of the text, each own id once
  int left_out = 0;               ///< what is no event: without a usable id, origin time or epicentre
  QStringList unread_ids;         ///< all ids of what was left out: the feed has these events, whatever they are now
  int nameless = 0;               ///< what was left out without even an id: nobody knows which events these are
  QString fault;                  ///< what is wrong with the text as a whole; empty when it could be read
};

/// Counts what is no event, and keeps the `ids` under which it is known; none when not even one is usable.
void LeaveOut(FeedReading &reading, const QStringList &ids);

/// A reading of nothing but a fault.
FeedReading FaultyReading(const QString &fault);

/// What every reader of a feed does with its reading in the end. Of several events with one id the one that was revised
/// last stays. Names that are too long for a page are cut. A text of which the most part cannot be read has changed its
/// form: it is faulty.
FeedReading FinishReading(FeedReading reading);

}  // namespace borvane::mirror
