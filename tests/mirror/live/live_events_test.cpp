#include "live/live_events.h"

#include <gtest/gtest.h>

#include "support/mirror/live_events_under_test.h"

namespace borvane::mirror {
namespace {

TEST_F(LiveEventsTest, HaveWhatAFeedGives) {
  const FeedEvent given = Given("ci1");
  const EventChanges changes = Take({given});
  EXPECT_EQ(changes.fault, "");
  ASSERT_EQ(changes.records.size(), 1U);
  EXPECT_EQ(changes.records[0].seen, now_);
  EXPECT_FALSE(changes.records[0].is_gone);
  ASSERT_EQ(Ids(), QStringList("ci1"));
  Event expected = given.event;
  expected.updated = given.updated;
  expected.credit = "The survey";
  EXPECT_EQ(Shown()->events()[0], expected);
}

TEST_F(LiveEventsTest, ReportOnlyWhatChanged) {
  Take({Given("ci1"), Given("ci2")});
  PassMinute();
  EXPECT_EQ(IdsOf(Take({Given("ci1"), Given("ci2", now_), Given("ci3")})), QStringList({"ci2", "ci3"}));
}

TEST_F(LiveEventsTest, FollowAnEventThroughTenRevisions) {
  for (int revision = 0; revision < 10; ++revision) {
    PassMinute();
    EXPECT_EQ(IdsOf(Take({Given("ci1", now_, 2 + revision / 10.0)})), QStringList("ci1"));
    EXPECT_EQ(Magnitude("ci1"), 2 + revision / 10.0);
  }
}

TEST_F(LiveEventsTest, IgnoreARevisionOlderThanTheirs) {
  Take({Given("ci1", start_of_test - 1, 3.0)});
  PassMinute();
  EXPECT_EQ(IdsOf(Take({Given("ci1", start_of_test - 2, 2.0)})), QStringList());
  EXPECT_EQ(Magnitude("ci1"), 3.0);
}

TEST_F(LiveEventsTest, BelieveTheLaterTextWhereTheFormGivesNoTimeOfRevision) {
  Take({Given("ci1", 0, 3.0)});
  TakeMadeAt(now_ - one_minute, {Given("ci1", 0, 2.0)});
  EXPECT_EQ(Magnitude("ci1"), 3.0);
  PassMinute();
  Take({Given("ci1", 0, 2.0)});
  EXPECT_EQ(Magnitude("ci1"), 2.0);
}

TEST_F(LiveEventsTest, ReplaceARevisionThatClaimsToComeFromTheFuture) {
  Take({Given("ci1", start_of_test + 1'000 * one_day, 9.9)});
  PassMinute();
  Take({Given("ci1", now_, 2.0)});
  EXPECT_EQ(Magnitude("ci1"), 2.0);
}

TEST_F(LiveEventsTest, LoseWhatIsDeleted) {
  Take({Given("ci1"), Given("ci2")});
  PassMinute();
  EXPECT_EQ(IdsOf(Take({Deleted("ci1"), Deleted("ci3")})), QStringList("-ci1"));
  EXPECT_EQ(Ids(), QStringList("ci2"));
  PassMinute();
  EXPECT_EQ(IdsOf(Take({Deleted("ci1")})), QStringList());
}

TEST_F(LiveEventsTest, LeaveOutAnEventOfTheFuture) {
  const EventChanges changes = Take({GivenAt("near", now_ + one_hour), GivenAt("far", now_ + one_day + 1)});
  EXPECT_EQ(changes.fault, "");
  EXPECT_EQ(Ids(), QStringList("near"));
}

TEST_F(LiveEventsTest, RefuseATextOfAnotherYear) {
  Take({Given("ci1")});
  for (const qint64 away : {365 * one_day, -365 * one_day, one_day + 1, -one_day - 1}) {
    const EventChanges changes = TakeMadeAt(now_ + away, {Given("ci2")}, WholeWeek());
    EXPECT_TRUE(changes.fault.contains("this computer's clock says 2026-06-19 03:04 UTC"))
        << changes.fault.toStdString();
    EXPECT_EQ(IdsOf(changes), QStringList());
  }
  EXPECT_EQ(Ids(), QStringList("ci1"));
}

TEST_F(LiveEventsTest, RefuseATextWithoutATimeWhoseEventsLieInTheFuture) {
  const EventChanges changes =
      TakeMadeAt(0, {Given("ci1"), GivenAt("ci2", now_ + 365 * one_day), GivenAt("ci3", now_ + 365 * one_day)});
  EXPECT_EQ(changes.fault, "2 of its 3 events lie in the future");
  EXPECT_EQ(Ids(), QStringList());
}

TEST_F(LiveEventsTest, RefuseWhatCouldNotBeRead) {
  FeedReading reading = ReadingOf({Given("ci1")});
  reading.fault = "not JSON";
  EXPECT_EQ(events_.Take(0, Recent(), reading, now_).fault, "not JSON");
  EXPECT_EQ(Ids(), QStringList());
}

TEST_F(LiveEventsTest, ShowTheLastDaysNewestFirst) {
  Take({GivenAt("b", now_ - 2 * one_hour), GivenAt("a", now_ - one_hour), GivenAt("d", now_ - 7 * one_day - 1),
        GivenAt("c", now_ - 7 * one_day)});
  EXPECT_EQ(Ids(), QStringList({"a", "b", "c"}));
  EXPECT_EQ(Ids(1), QStringList({"a", "b"}));
  now_ += 1;
  EXPECT_EQ(Ids(), QStringList({"a", "b"}));
}

TEST_F(LiveEventsTest, ListOnlyTheKindsThatAreAskedFor) {
  FeedEvent blast = Given("blast");
  blast.event.kind = "quarry blast";
  FeedEvent unknown = Given("unknown");
  unknown.event.kind = "";
  Take({Given("quake"), blast, unknown});
  const auto listed = [this](const QStringList &kinds) {
    QStringList ids;
    const std::shared_ptr<const Catalogue> shown = events_.Shown(now_, 7, kinds);
    EXPECT_EQ(shown->events().size(), 3U) << "each has its page";
    for (const Event &event : shown->events())
      if (event.is_listed)
        ids.append(event.id);
    return ids;
  };
  EXPECT_EQ(listed({"earthquake"}), QStringList({"quake", "unknown"}));
  EXPECT_EQ(listed({"quarry blast"}), QStringList({"blast"}));
  EXPECT_EQ(listed({"all"}), QStringList({"blast", "quake", "unknown"}));
  EXPECT_EQ(listed({}), QStringList());
}

TEST_F(LiveEventsTest, ShowAnEventOfTwoSourcesOnceAsTheSourceOfHigherRankHasIt) {
  TakeFromCentre({Given("centre1", start_of_test, 2.9), GivenAt("centre2", now_ - 3 * one_hour)});
  EXPECT_EQ(Ids(), QStringList({"centre1", "centre2"}));
  Take({Given("ci1")});
  EXPECT_EQ(Ids(), QStringList({"ci1", "centre2"}));
  EXPECT_EQ(Shown()->Find("ci1")->credit, "The survey");
  EXPECT_EQ(Shown()->Find("centre2")->credit, "The centre");
  PassMinute();
  Take({Deleted("ci1")});
  EXPECT_EQ(Ids(), QStringList({"centre1", "centre2"}));
}

TEST_F(LiveEventsTest, ShowNoDoubleOfAnEventThatHasJustBecomeTooOld) {
  Take({GivenAt("ci1", now_ - 7 * one_day - 10'000)});
  TakeFromCentre({GivenAt("centre1", now_ - 7 * one_day + 10'000)});
  EXPECT_EQ(Ids(), QStringList());
}

TEST_F(LiveEventsTest, ForgetWhatIsTooOldUnlessAFeedStillHasIt) {
  Take({GivenAt("ci1", now_ - 20 * one_day), GivenAt("ci2", now_ - 20 * one_day), Given("ci3")});
  EXPECT_EQ(events_.Records().size(), 3U);
  now_ += one_day + one_hour;
  Take({GivenAt("ci1", start_of_test - 20 * one_day)});
  QStringList ids;
  for (const EventRecord &record : events_.Records())
    ids.append(record.event.id);
  EXPECT_EQ(ids, QStringList({"ci1", "ci3"}));
}

TEST_F(LiveEventsTest, ForgetWhatIsTooOldWhereAllComesFromAStore) {
  const EventChanges changes = Take({Given("ci1"), Given("ci2")});
  LiveEvents follower(TwoSources());
  follower.Restore(changes.records, now_);
  now_ += 20 * one_day;
  follower.Restore(Take({GivenAt("ci3", now_)}).records, now_);
  ASSERT_EQ(follower.Records().size(), 1U);
  EXPECT_EQ(follower.Records()[0].event.id, "ci3");
}

TEST_F(LiveEventsTest, GrowNoFurtherThanTheirLimit) {
  LiveEvents events(TwoSources(), {.span = std::chrono::hours(8 * 24), .most_records = 100});
  events.Take(0, Recent(), ReadingOf(Several(250)), now_);
  EXPECT_EQ(events.Records().size(), 100U);
  EXPECT_EQ(events.Shown(now_, 7, {})->events().back().id, "ci99") << "the oldest go";
  events.Take(0, Recent(), ReadingOf({GivenAt("new", now_)}), now_);
  EXPECT_EQ(events.Records().size(), 100U);
  EXPECT_EQ(events.Shown(now_, 7, {})->events().front().id, "new");
  EXPECT_EQ(events.Shown(now_, 7, {})->events().back().id, "ci98");
}

TEST_F(LiveEventsTest, RememberTheLastTextThatConfirmedWhatAStoreHas) {
  const EventChanges changes = Take({Given("ci1", 0)});
  PassMinute();
  Take({Given("ci1", 0)});
  EXPECT_FALSE(events_.Restore(changes.records, now_));
  ASSERT_EQ(events_.Records().size(), 1U);
  EXPECT_EQ(events_.Records()[0].seen, now_);
}

TEST_F(LiveEventsTest, BelieveAStore) {
  const EventChanges first = Take({Given("ci1", start_of_test - 1, 2.0), Given("ci2")});
  PassMinute();
  const EventChanges second = Take({Given("ci1", now_, 3.0), Deleted("ci2")});
  LiveEvents other(TwoSources());
  EXPECT_TRUE(other.Restore(second.records, now_));
  EXPECT_FALSE(other.Restore(second.records, now_));
  EXPECT_TRUE(other.Restore(first.records, now_)) << "from a leader whose clock is behind";
  EXPECT_EQ(other.Records(), first.records);
  EXPECT_TRUE(other.Restore(second.records, now_));
  EXPECT_EQ(other.Records(), events_.Records());
  const std::shared_ptr<const Catalogue> shown = other.Shown(now_, 7, {"earthquake"});
  ASSERT_EQ(shown->events().size(), 1U);
  EXPECT_EQ(shown->events()[0].credit, "The survey");
  EXPECT_EQ(shown->events()[0].magnitude, 3.0);
}

}  // namespace
}  // namespace borvane::mirror
