#include <random>

#include <gtest/gtest.h>

#include "live/live_events.h"
#include "support/mirror/feed_samples.h"
#include "support/mirror/plain_live_events.h"

// The same readings by the quick rules and by the plain ones.

namespace borvane::mirror {
namespace {

/// Feeds that contradict themselves and one another: few ids, each for several events; texts that come late; revisions
/// in any order. The same seed gives the same feeds.
class RandomFeeds {
 public:
  explicit RandomFeeds(unsigned seed) : random_(seed), ids_(Number(3, 40)) {}

  int Number(int least, int greatest) { return std::uniform_int_distribution(least, greatest)(random_); }
  bool OneIn(int count) { return Number(1, count) == 1; }

  FeedReading Reading(int source, qint64 now) {
    const qint64 made = OneIn(8) ? 0 : now - Number(0, 4) * one_minute / 2;
    std::vector<FeedEvent> events;
    QStringList own_ids;
    for (int count = Number(0, 25); count > 0; --count) {
      FeedEvent event = MakeEvent(source, now);
      if (own_ids.contains(event.event.id))
        continue;
      own_ids.append(event.event.id);
      events.push_back(std::move(event));
    }
    return ReadingOf(std::move(events), made);
  }

 private:
  QString Id(int source) { return QString("s%1e%2").arg(source).arg(Number(1, ids_)); }

  FeedEvent MakeEvent(int source, qint64 now) {
    FeedEvent given;
    Event &event = given.event;
    event.id = Id(source);
    given.ids = QStringList{event.id};
    for (int more = OneIn(3) ? Number(1, 2) : 0; more > 0; --more)
      if (const QString id = Id(source); !given.ids.contains(id))
        given.ids.append(id);
    given.deleted = OneIn(15);
    given.updated = OneIn(6) ? 0 : now + Number(-20, 3) * one_minute / 4;
    // Few times and places, so that events of several sources are near one another.
    event.origin_time = start_of_test - Number(0, 5) * 36 * one_hour - Number(0, 6) * 14'000 - Number(0, 2);
    if (OneIn(60))
      event.origin_time += 11 * one_day;
    event.latitude = Number(0, 3) * 0.41 + Number(0, 1000) * 1e-6;
    event.longitude = (OneIn(2) ? 179.5 : -179.6) + Number(0, 1000) * 1e-6;
    if (!OneIn(6))
      event.magnitude = Number(0, 40) / 10.0;
    event.place = OneIn(2) ? "here" : "there";
    event.kind = OneIn(8) ? (OneIn(2) ? "" : "explosion") : "earthquake";
    return given;
  }

  std::mt19937 random_;
  int ids_;
};

TEST(LiveEventsTwin, KnowsWhatThePlainRulesKnow) {
  int shown = 0;
  int refused = 0;
  int merged = 0;
  for (unsigned seed = 1; seed <= 400; ++seed) {
    RandomFeeds feeds(seed);
    const std::vector<Source> sources = {{.name = "a", .credit = "A", .rank = feeds.Number(0, 2)},
                                         {.name = "b", .credit = "B", .rank = feeds.Number(0, 2)},
                                         {.name = "c", .credit = "C", .rank = 1}};
    LiveEvents quick(sources, {.span = std::chrono::hours(24 * 400)});
    PlainLiveEvents plain(sources);
    qint64 now = start_of_test;
    for (int round = 0; round < 25; ++round) {
      now += feeds.Number(0, 90) * one_minute / 2;
      const int source = feeds.Number(0, 2);
      const FeedSpan span = feeds.OneIn(3) ? WholeWeek() : Recent();
      const FeedReading reading = feeds.Reading(source, now);
      if (quick.Take(source, span, reading, now).fault.isEmpty())
        plain.Take(source, span, reading, now);
      else
        ++refused;

      const std::shared_ptr<const Catalogue> catalogue = quick.Shown(now, 7, {"earthquake"});
      ASSERT_EQ(catalogue->events(), plain.Shown(now, 7, {"earthquake"})) << "seed " << seed << ", round " << round;
      shown += static_cast<int>(catalogue->events().size());
      const std::vector<EventRecord> records = quick.Records();
      merged += static_cast<int>(std::count_if(records.begin(), records.end(), [&](const EventRecord &record) {
        const Event *found = catalogue->Find(record.event.id);
        return !record.is_gone && record.event.origin_time >= now - 7 * one_day && found != nullptr &&
               found->id != record.event.id;
      }));
    }
  }
  // Otherwise nothing was compared.
  EXPECT_GT(shown, 20'000);
  EXPECT_GT(merged, 2'000);
  EXPECT_LT(refused, 3'000);
}

TEST(LiveEventsTwin, ShowsTheSameInWhateverOrderTheSourcesAnswer) {
  for (unsigned seed = 1; seed <= 100; ++seed) {
    RandomFeeds feeds(seed);
    std::vector<FeedReading> readings;
    for (int source = 0; source < 2; ++source) {
      readings.push_back(feeds.Reading(source, start_of_test));
      readings.back().generated = start_of_test;
    }
    LiveEvents one(TwoSources());
    LiveEvents other(TwoSources());
    for (const int source : {0, 1})
      one.Take(source, Recent(), readings[static_cast<std::size_t>(source)], start_of_test);
    for (const int source : {1, 0})
      other.Take(source, Recent(), readings[static_cast<std::size_t>(source)], start_of_test);
    EXPECT_EQ(one.Shown(start_of_test, 7, {})->events(), other.Shown(start_of_test, 7, {})->events());
  }
}

}  // namespace
}  // namespace borvane::mirror
