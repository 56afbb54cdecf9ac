#include <utility>

#include <gtest/gtest.h>

#include "support/mirror/live_events_under_test.h"

// What it means that a feed lacks an event that it had.

namespace borvane::mirror {
namespace {

TEST_F(LiveEventsTest, KeepAnEventThatLeavesAFeedOfRecentOnes) {
  Take({Given("ci1")});
  PassMinute();
  EXPECT_EQ(IdsOf(Take({})), QStringList());
  EXPECT_EQ(Ids(), QStringList("ci1"));
}

TEST_F(LiveEventsTest, LoseAnEventThatAFeedOfTheWholeWeekNoLongerHas) {
  Take({Given("ci1"), Given("ci2")}, WholeWeek());
  PassMinute();
  EXPECT_EQ(IdsOf(Take({Given("ci2")}, WholeWeek())), QStringList("-ci1"));
  EXPECT_EQ(Ids(), QStringList("ci2"));
}

TEST_F(LiveEventsTest, KeepWhatAFeedOfTheWholeWeekHasButCannotBeRead) {
  Take({Given("ci1"), AlsoKnownAs(Given("us2"), {"ci2"}), Given("ci3")}, WholeWeek());
  PassMinute();
  FeedReading reading = ReadingOf({}, now_);
  reading.unread_ids = {"ci1", "ci2"};
  EXPECT_EQ(IdsOf(events_.Take(0, WholeWeek(), reading, now_)), QStringList("-ci3"));
  PassMinute();
  reading = ReadingOf({}, now_);
  reading.nameless = 1;
  EXPECT_EQ(IdsOf(events_.Take(0, WholeWeek(), reading, now_)), QStringList()) << "it may be any of them";
  EXPECT_EQ(Ids().size(), 2);
}

TEST_F(LiveEventsTest, KeepWhatIsOlderThanTheFeedsSpan) {
  const qint64 week = 7 * one_day;
  Take({GivenAt("old", now_ - week + 9 * one_minute), GivenAt("new", now_ - week + 11 * one_minute)});
  EXPECT_EQ(IdsOf(Take({}, WholeWeek())), QStringList()) << "the text is no newer";
  now_ += 1;
  EXPECT_EQ(IdsOf(Take({}, WholeWeek())), QStringList("-new"));
}

TEST_F(LiveEventsTest, KeepWhatIsInTheFeedUnderAnotherId) {
  Take({AlsoKnownAs(Given("ci1", start_of_test - 1, 3.5), {"us1"})});
  PassMinute();
  Take({Given("us1", start_of_test - 2)}, WholeWeek());
  EXPECT_EQ(Ids(), QStringList("ci1"));
}

TEST_F(LiveEventsTest, KeepWhatWasPublishedAfterAFeedOfTheWholeWeekWasMade) {
  Take({Given("ci1")});
  EXPECT_EQ(IdsOf(TakeMadeAt(now_ - one_minute, {Given("ci2")}, WholeWeek())), QStringList("ci2"));
  EXPECT_EQ(Ids().size(), 2);
}

TEST_F(LiveEventsTest, AreNotBroughtBackByATextThatWasMadeBeforeTheyWent) {
  Take({Given("ci1"), Given("ci2")}, WholeWeek());
  PassMinute();
  Take({Given("ci2")}, WholeWeek());
  TakeMadeAt(now_ - one_minute, {Given("ci1")});
  EXPECT_EQ(Ids(), QStringList("ci2"));
  PassMinute();
  Take({Given("ci1")});
  EXPECT_EQ(Ids().size(), 2);
}

TEST_F(LiveEventsTest, LoseOnlyEventsOfTheFeedsOwnSource) {
  TakeFromCentre({GivenAt("centre1", now_ - 2 * one_hour)});
  PassMinute();
  Take({}, WholeWeek());
  EXPECT_EQ(Ids(), QStringList("centre1"));
}

TEST_F(LiveEventsTest, LoseNothingToAFeedWithSomethingOfWhichNotEvenTheIdCanBeRead) {
  Take({Given("ci1"), Given("ci2")}, WholeWeek());
  PassMinute();
  FeedReading reading = ReadingOf({Given("ci2")}, now_);
  reading.left_out = 1;
  reading.nameless = 1;
  EXPECT_EQ(IdsOf(events_.Take(0, WholeWeek(), reading, now_)), QStringList());
  EXPECT_EQ(Ids().size(), 2);
}

TEST_F(LiveEventsTest, RefuseAWholeWeekThatHasLostMoreThanHalfOfItsEvents) {
  Take(Several(20), WholeWeek());
  PassMinute();
  EXPECT_EQ(Take({}, WholeWeek()).fault, "it has only 0 events, while 20 are known of its span");
  EXPECT_EQ(Take(Several(9), WholeWeek()).fault, "it has only 9 events, while 20 are known of its span");
  std::vector<FeedEvent> deleted = Several(9);
  for (int i = 9; i < 20; ++i)
    deleted.push_back(Deleted(QString("ci%1").arg(i)));
  EXPECT_NE(Take(std::move(deleted), WholeWeek()).fault, "");
  EXPECT_EQ(Ids().size(), 20);
  EXPECT_EQ(Take(Several(10), WholeWeek()).fault, "");
  EXPECT_EQ(Ids().size(), 10);
}

TEST_F(LiveEventsTest, BelieveAFewEventsToBeAll) {
  Take(Several(9), WholeWeek());
  PassMinute();
  EXPECT_EQ(Take({}, WholeWeek()).fault, "");
  EXPECT_EQ(Ids(), QStringList());
}

TEST_F(LiveEventsTest, BelieveAFeedOfRecentOnesToBeEmpty) {
  Take(Several(20));
  PassMinute();
  EXPECT_EQ(Take({}).fault, "");
  EXPECT_EQ(Ids().size(), 20);
}

TEST_F(LiveEventsTest, BelieveALossThatLastsForAnHour) {
  Take(Several(20), WholeWeek());
  now_ += one_hour;
  EXPECT_NE(Take(Several(5), WholeWeek()).fault, "");
  now_ += one_hour - 1;
  EXPECT_NE(Take(Several(5), WholeWeek()).fault, "");
  now_ += 1;
  EXPECT_EQ(Take(Several(5), WholeWeek()).fault, "");
  EXPECT_EQ(Ids().size(), 5);
}

TEST_F(LiveEventsTest, SuspectALossAgainAfterTheFeedWasWhole) {
  Take(Several(20), WholeWeek());
  now_ += one_hour;
  EXPECT_NE(Take(Several(5), WholeWeek()).fault, "");
  now_ += one_minute;
  EXPECT_EQ(Take(Several(20), WholeWeek()).fault, "");
  now_ += one_hour;
  EXPECT_NE(Take(Several(5), WholeWeek()).fault, "");
}

TEST_F(LiveEventsTest, SuspectNothingAfterAMonthWithoutTheFeed) {
  Take(Several(20), WholeWeek());
  now_ += 30 * one_day;
  EXPECT_EQ(Take({GivenAt("ci99", now_ - one_hour)}, WholeWeek()).fault, "");
  EXPECT_EQ(Ids(), QStringList("ci99"));
}

TEST_F(LiveEventsTest, DoNotSuspectALossWhereEventsCannotBeRead) {
  Take(Several(20), WholeWeek());
  PassMinute();
  FeedReading reading = ReadingOf(Several(9), now_);
  reading.left_out = 1;
  reading.unread_ids = QStringList("ci9");
  EXPECT_EQ(events_.Take(0, WholeWeek(), reading, now_).fault, "");
  EXPECT_EQ(Ids().size(), 10);
}

}  // namespace
}  // namespace borvane::mirror
