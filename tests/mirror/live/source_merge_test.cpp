#include "live/source_merge.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "support/mirror/feed_samples.h"

namespace borvane::mirror {
namespace {

/// An event that many seconds, kilometres to the north and magnitudes from one place.
Event Away(const QString &id, double seconds = 0, double kilometres = 0, double magnitudes = 0) {
  Event event = Given(id).event;
  event.origin_time += static_cast<qint64>(seconds * 1000);
  event.latitude += kilometres / 111.194926644559;  // a degree on a ball of 6,371 km
  event.magnitude = 4.7 - magnitudes;
  return event;
}

/// The ids of what is shown of the sources' events, in alphabetical order.
QStringList Shown(const std::vector<std::vector<Event>> &sources) {
  std::vector<std::vector<const Event *>> lists;
  for (const std::vector<Event> &events : sources) {
    lists.emplace_back();
    for (const Event &event : events)
      lists.back().push_back(&event);
  }
  QStringList ids;
  for (const Event *event : MergeSources(std::move(lists)).shown)
    ids.append(event->id);
  ids.sort();
  return ids;
}

TEST(MergeSources, ShowsAnEventOfTwoSourcesOnceAsTheFirstHasIt) {
  EXPECT_EQ(Shown({{Away("a")}, {Away("b")}}), QStringList("a"));
  EXPECT_EQ(Shown({{Away("b")}, {Away("a")}}), QStringList("b"));
  EXPECT_EQ(Shown({{}, {Away("b")}}), QStringList("b"));
  EXPECT_EQ(Shown({{}, {}}), QStringList());
  EXPECT_EQ(Shown({}), QStringList());
}

TEST(MergeSources, TakesTwoForOneUpToThirtySeconds) {
  for (const double sign : {1.0, -1.0}) {
    EXPECT_EQ(Shown({{Away("a")}, {Away("b", sign * 30)}}), QStringList("a"));
    EXPECT_EQ(Shown({{Away("a")}, {Away("b", sign * 30.001)}}), QStringList({"a", "b"}));
  }
}

TEST(MergeSources, TakesTwoForOneUpToAHundredKilometres) {
  for (const double sign : {1.0, -1.0}) {
    EXPECT_EQ(Shown({{Away("a")}, {Away("b", 0, sign * 99.99)}}), QStringList("a"));
    EXPECT_EQ(Shown({{Away("a")}, {Away("b", 0, sign * 100.01)}}), QStringList({"a", "b"}));
  }
}

TEST(MergeSources, TakesTwoForOneUpToAMagnitudeAndAHalf) {
  for (const double sign : {1.0, -1.0}) {
    EXPECT_EQ(Shown({{Away("a")}, {Away("b", 0, 0, sign * 1.5)}}), QStringList("a"));
    EXPECT_EQ(Shown({{Away("a")}, {Away("b", 0, 0, sign * 1.51)}}), QStringList({"a", "b"}));
  }
}

TEST(MergeSources, LetsAnEventWithoutAMagnitudeBeOfAny) {
  Event unknown = Away("b");
  unknown.magnitude.reset();
  EXPECT_EQ(Shown({{Away("a", 0, 0, -5)}, {unknown}}), QStringList("a"));
  EXPECT_EQ(Shown({{unknown}, {Away("a")}}), QStringList("b"));
}

TEST(MergeSources, MeasuresAcrossTheDateLineAndAtThePoles) {
  Event west = Away("a");
  Event east = Away("b");
  west.longitude = -179.9;
  east.longitude = 179.9;
  EXPECT_EQ(Shown({{west}, {east}}), QStringList("a"));
  west.latitude = east.latitude = 89.9;
  west.longitude = 0;
  EXPECT_EQ(Shown({{west}, {east}}), QStringList("a"));
  west.latitude = east.latitude = 0;
  EXPECT_EQ(Shown({{west}, {east}}), QStringList({"a", "b"}));
}

TEST(MergeSources, NeverMakesOneOfTwoEventsOfOneSource) {
  EXPECT_EQ(Shown({{Away("a")}, {Away("b1"), Away("b2", 1)}}), QStringList({"a", "b2"}));
  EXPECT_EQ(Shown({{Away("a1"), Away("a2", 1)}, {Away("b", 2)}}), QStringList({"a1", "a2"}));
  EXPECT_EQ(Shown({{Away("a1"), Away("a2", 5)}, {Away("b2", 5), Away("b1", 1)}}), QStringList({"a1", "a2"}));
}

TEST(MergeSources, PairsTheNearestInTimeAndThenInSpace) {
  EXPECT_EQ(Shown({{Away("a")}, {Away("b1", 2, 0), Away("b2", -1, 50)}}), QStringList({"a", "b1"}));
  EXPECT_EQ(Shown({{Away("a")}, {Away("b1", 1, 50), Away("b2", -1, 40)}}), QStringList({"a", "b1"}));
}

TEST(MergeSources, ShowsWhatTheFirstTwoLackAsTheThirdHasIt) {
  EXPECT_EQ(Shown({{Away("a")}, {Away("b1"), Away("b2", 100)}, {Away("c1"), Away("c2", 101), Away("c3", 300)}}),
            QStringList({"a", "b2", "c3"}));
}

TEST(MergeSources, SaysWhichOfTheShownEventsEachDoubleIs) {
  const std::vector<Event> events = {Away("a"), Away("b1", 1), Away("b2", 100), Away("c1", 2), Away("c2", 101)};
  const MergedEvents merged = MergeSources({{&events[0]}, {&events[1], &events[2]}, {&events[3], &events[4]}});
  QStringList doubles;
  for (const auto &[other, event] : merged.doubles)
    doubles.append(other->id + " is " + event->id);
  doubles.sort();
  EXPECT_EQ(doubles, QStringList({"b1 is a", "c1 is a", "c2 is b2"}));
}

TEST(MergeSources, ComparesOnlySomeOfThousandsAtOneTime) {
  const std::vector<Event> first(20'000, Away("a"));
  const std::vector<Event> second(20'000, Away("b"));
  std::vector<std::vector<const Event *>> lists(2);
  for (const Event &event : first)
    lists[0].push_back(&event);
  for (const Event &event : second)
    lists[1].push_back(&event);
  const MergedEvents merged = MergeSources(std::move(lists));
  EXPECT_GT(merged.doubles.size(), 0U);
  EXPECT_LT(merged.doubles.size(), 1'000U);
  EXPECT_EQ(merged.shown.size() + merged.doubles.size(), 40'000U);
}

TEST(MergeSources, ComparesWithThoseNearestInTimeWhereThereAreTooMany) {
  for (const double sign : {1.0, -1.0}) {
    std::vector<Event> first = {Away("same", sign * 20)};
    for (int i = 0; i < 60; ++i) {
      first.push_back(Away(QString("earlier%1").arg(i), sign * i / 10.0, 1'000));
      first.push_back(Away(QString("later%1").arg(i), sign * (40 - i / 10.0), 1'000));
    }
    const QStringList without = Shown({first});
    EXPECT_EQ(Shown({first, {Away("other", sign * 20.5)}}), without) << sign;
    EXPECT_EQ(Shown({first, {Away("other", sign * 19.5)}}), without) << sign;
  }
}

TEST(MergeSources, DoesNotDependOnTheOrderOfASourcesEvents) {
  std::vector<Event> first;
  std::vector<Event> second;
  for (int i = 0; i < 6; ++i) {
    first.push_back(Away(QString("a%1").arg(i), 7 * i, i));
    second.push_back(Away(QString("b%1").arg(i), 11 * i, 2 * i));
  }
  const QStringList shown = Shown({first, second});
  EXPECT_GT(shown.size(), 6);
  EXPECT_LT(shown.size(), 12);
  for (int i = 0; i < 500; ++i) {
    std::next_permutation(second.begin(), second.end(), [](const Event &a, const Event &b) { return a.id < b.id; });
    std::rotate(first.begin(), first.begin() + 1, first.end());
    ASSERT_EQ(Shown({first, second}), shown);
  }
}

}  // namespace
}  // namespace borvane::mirror
