#pragma once

#include <QByteArray>
#include <deque>
#include <random>
#include <vector>

#include "support/mirror/feed_samples.h"

namespace borvane::mirror {

/// A world in which events happen at random, and the feeds that the two sources of TwoSources publish of them. Time is
/// the test's. The same minutes give the same feeds.
class FeedWorld {
 public:
  /// Moves the time on by a minute: events come, are revised, get other ids, are taken back.
  void PassMinute(qint64 now);

  /// The survey's newest 200 events in GeoJSON, with some that it calls deleted.
  QByteArray NewestEvents(qint64 now) const;

  /// All events of the survey's week in GeoJSON.
  QByteArray WholeWeekOfEvents(qint64 now) const;

  /// The centre's newest 50 events as lines, which say nothing of when they were made or revised.
  QByteArray EventsOfTheCentre() const;

  /// What is to be shown of the events since then to one who has just read all feeds, newest first: what the survey has
  /// not taken back, and what only the centre has. Seven days back is as far as the world remembers.
  std::vector<Event> EventsSince(qint64 time) const;

 private:
  /// An event that the survey has.
  struct Happened {
    int number = 0;
    FeedEvent said;
    int first_magnitude = 0;  ///< in tenths
    QByteArray text;          ///< what is said, in GeoJSON
  };
  struct Withdrawn {
    QByteArray text;
    qint64 until = 0;
  };
  /// What the centre has said. It is never revised.
  struct Reported {
    int number = 0;
    Event event;
    bool is_its_own = false;  ///< too far from the survey's event to be that one, or left alone by it
    QByteArray line;
  };

  int Number(int least, int greatest) { return std::uniform_int_distribution(least, greatest)(random_); }
  bool OneIn(int count) { return Number(1, count) == 1; }
  std::size_t Place() { return static_cast<std::size_t>(Number(0, static_cast<int>(survey_.size()) - 1)); }

  void Happen(qint64 now);
  void Report(const Happened &happened);
  void Revise(Happened &happened, qint64 now);
  void TakeBack(qint64 now);
  void Forget(qint64 now);

  std::mt19937 random_{1};
  std::deque<Happened> survey_;  ///< in the order of their origin times, but for a minute
  std::deque<Reported> centre_;
  std::deque<Withdrawn> withdrawn_;
  int count_ = 0;
};

}  // namespace borvane::mirror
