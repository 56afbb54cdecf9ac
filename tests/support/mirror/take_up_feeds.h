#pragma once

#include <QStringList>

#include "support/mirror/feed_samples.h"

namespace borvane::mirror {

/// The texts that the program take_up_feeds takes up, made a minute after one another: each has an event more than the
/// one before and a revision of the first; the third lacks the second event; in the fourth the third has another id.
inline FeedReading ReadingNumber(int number) {
  const qint64 made = start_of_test + number * one_minute;
  std::vector<FeedEvent> events;
  for (int i = 1; i <= number; ++i) {
    if (i == 2 && number >= 3)
      continue;
    FeedEvent event = Given(QString("ci%1").arg(i), i == 1 ? made : start_of_test);
    event.event.origin_time -= i * one_minute;
    event.event.magnitude = i == 1 ? number : 2.5;
    if (i == 3 && number >= 4) {
      event.event.id = "us3";
      event.updated = made;
      event.ids = QStringList{"us3", "ci3"};
    }
    events.push_back(event);
  }
  return ReadingOf(std::move(events), made);
}

/// The ids that are served after that text, in alphabetical order.
inline QString IdsAfter(int number) {
  static const QStringList ids = {"", "ci1", "ci1 ci2", "ci1 ci3", "ci1 ci4 us3", "ci1 ci4 ci5 us3"};
  return ids.at(number);
}

}  // namespace borvane::mirror
