#include "live/live_events.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "support/mirror/feed_samples.h"

namespace borvane::mirror {
namespace {

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
std::vector<FeedEvent> Several(int count) {
  std::vector<FeedEvent> events;
  for (int i = 0; i < count; ++i)
    events.push_back(GivenAt(QString("ci%1").arg(i), start_of_test - one_hour - i * one_minute));
  return events;
}

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

TEST_F(LiveEventsTest, LoseAnEventThatIsDeletedUnderAnotherOfItsIds) {
  Take({AlsoKnownAs(Given("ci1"), {"us1"})});
  PassMinute();
  Take({Deleted("us1")});
  EXPECT_EQ(Ids(), QStringList());
}

TEST_F(LiveEventsTest, KnowAnEventThatComesUnderAnotherId) {
  Take({Given("ci1")});
  PassMinute();
  EXPECT_EQ(IdsOf(Take({AlsoKnownAs(Given("us1", now_, 3.5), {"ci1"})})), QStringList({"-ci1", "us1"}));
  EXPECT_EQ(Ids(), QStringList("us1"));
  PassMinute();
  Take({AlsoKnownAs(Given("ci1", now_, 3.6), {"us1"})});
  EXPECT_EQ(Ids(), QStringList("ci1"));
  PassMinute();
  Take({AlsoKnownAs(Given("us1", now_, 3.7), {"nn1", "ci1"})});
  EXPECT_EQ(Ids(), QStringList("us1"));
}

TEST_F(LiveEventsTest, KnowAnEventThatLosesTheIdItHadAmongOthers) {
  Take({AlsoKnownAs(Given("us1"), {"ci1"})});
  PassMinute();
  Take({Given("ci1", now_, 3.5)});
  EXPECT_EQ(Ids(), QStringList("ci1"));
}

TEST_F(LiveEventsTest, AreNotMisledByAnOldTextWithAnOldId) {
  Take({Given("ci1")});
  PassMinute();
  Take({AlsoKnownAs(Given("us1", now_), {"ci1"})});
  EXPECT_EQ(IdsOf(TakeMadeAt(now_ - one_minute, {Given("ci1")})), QStringList());
  EXPECT_EQ(Ids(), QStringList("us1"));
}

TEST_F(LiveEventsTest, MakeOneOfTwoEventsThatTurnOutToBeOne) {
  Take({Given("ci1"), Given("us1")});
  PassMinute();
  Take({AlsoKnownAs(Given("us1", now_), {"ci1"})});
  EXPECT_EQ(Ids(), QStringList("us1"));
}

TEST_F(LiveEventsTest, MakeTwoOfAnEventThatTurnsOutToBeTwo) {
  Take({AlsoKnownAs(Given("ci1"), {"us1"})});
  PassMinute();
  Take({Given("us1"), Given("ci1")});
  QStringList ids = Ids();
  ids.sort();
  EXPECT_EQ(ids, QStringList({"ci1", "us1"}));
}

TEST_F(LiveEventsTest, KeepTwoEventsOfOneTextApartWhateverIdsTheyShare) {
  for (int i = 0; i < 3; ++i) {
    PassMinute();
    const EventChanges changes = Take({AlsoKnownAs(Given("ci1"), {"nn1", "us1"}), AlsoKnownAs(Given("us1"), {"nn1"})});
    EXPECT_EQ(changes.records.size(), i == 0 ? 2U : 0U);
    EXPECT_EQ(Ids().size(), 2);
  }
}

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

TEST_F(LiveEventsTest, LeaveOutAnEventOfTheFuture) {
  const EventChanges changes = Take({GivenAt("near", now_ + one_hour), GivenAt("far", now_ + one_day + 1)});
  EXPECT_EQ(changes.fault, "");
  EXPECT_EQ(Ids(), QStringList("near"));
}

TEST_F(LiveEventsTest, DropIdsThatNoEventCanHave) {
  const EventChanges changes = Take({AlsoKnownAs(Given("ci1"), {"a/b", "", "us1", "us1", "ci1"})});
  ASSERT_EQ(changes.records.size(), 1U);
  EXPECT_EQ(changes.records[0].other_ids, QStringList("us1"));
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

TEST_F(LiveEventsTest, RefuseAWholeWeekThatHasLostMoreThanHalfOfItsEvents) {
  Take(Several(20), WholeWeek());
  PassMinute();
  EXPECT_EQ(Take({}, WholeWeek()).fault, "it has 0 events, and 20 are known of its span");
  EXPECT_EQ(Take(Several(9), WholeWeek()).fault, "it has 9 events, and 20 are known of its span");
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

TEST_F(LiveEventsTest, BelieveALossThatLastsForADay) {
  Take(Several(20), WholeWeek());
  now_ += one_hour;
  EXPECT_NE(Take(Several(5), WholeWeek()).fault, "");
  now_ += one_day - 1;
  EXPECT_NE(Take(Several(5), WholeWeek()).fault, "");
  now_ += 1;
  EXPECT_EQ(Take(Several(5), WholeWeek()).fault, "");
  EXPECT_EQ(Ids().size(), 5);
}

TEST_F(LiveEventsTest, SuspectALossAgainAfterTheFeedWasWhole) {
  Take(Several(20), WholeWeek());
  now_ += one_hour;
  EXPECT_NE(Take(Several(5), WholeWeek()).fault, "");
  now_ += one_hour;
  EXPECT_EQ(Take(Several(20), WholeWeek()).fault, "");
  now_ += one_day;
  EXPECT_NE(Take(Several(5), WholeWeek()).fault, "");
}

TEST_F(LiveEventsTest, SuspectNothingAfterAMonthWithoutTheFeed) {
  Take(Several(20), WholeWeek());
  now_ += 30 * one_day;
  EXPECT_EQ(Take({GivenAt("ci99", now_ - one_hour)}, WholeWeek()).fault, "");
  EXPECT_EQ(Ids(), QStringList("ci99"));
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

TEST_F(LiveEventsTest, LoseNothingToAFeedWithSomethingOfWhichNotEvenTheIdCanBeRead) {
  Take({Given("ci1"), Given("ci2")}, WholeWeek());
  PassMinute();
  FeedReading reading = ReadingOf({Given("ci2")}, now_);
  reading.left_out = 1;
  reading.nameless = 1;
  EXPECT_EQ(IdsOf(events_.Take(0, WholeWeek(), reading, now_)), QStringList());
  EXPECT_EQ(Ids().size(), 2);
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

TEST_F(LiveEventsTest, AreFoundUnderTheIdsThatTheyHadBefore) {
  Take({Given("ci1")});
  PassMinute();
  Take({AlsoKnownAs(Given("us1", now_), {"ci1"})});
  ASSERT_NE(Shown()->Find("ci1"), nullptr);
  EXPECT_EQ(Shown()->Find("ci1")->id, "us1");
  EXPECT_EQ(Shown()->Find("ci2"), nullptr);
}

TEST_F(LiveEventsTest, AreFoundUnderTheIdsOfTheirDoubles) {
  TakeFromCentre({AlsoKnownAs(Given("centre1"), {"centre1b"})});
  PassMinute();
  Take({Given("ci1")});
  for (const char *id : {"centre1", "centre1b"}) {
    ASSERT_NE(Shown()->Find(id), nullptr) << id;
    EXPECT_EQ(Shown()->Find(id)->id, "ci1") << id;
  }
}

TEST_F(LiveEventsTest, HaveAPageEachWhereTwoSourcesCallDifferentEventsTheSame) {
  TakeFromCentre({GivenAt("17", now_ - 5 * one_hour)});
  Take({GivenAt("17", now_ - 3 * one_hour)});
  ASSERT_EQ(Ids(), QStringList({"17", "centre-17"}));
  EXPECT_EQ(Shown()->Find("17")->credit, "The survey");
  EXPECT_EQ(Shown()->Find("centre-17")->credit, "The centre");
}

TEST_F(LiveEventsTest, HaveAnIdForAPageWhateverTheirSourceIsCalled) {
  LiveEvents events(
      {{.name = "survey", .credit = "", .rank = 2}, {.name = "Erdbeben/Büro 7", .credit = "", .rank = 1}});
  const QString id(64, 'x');
  events.Take(0, Recent(), ReadingOf({Given("17"), GivenAt(id, now_ - 2 * one_hour)}), now_);
  events.Take(1, Recent(), ReadingOf({GivenAt("17", now_ - 5 * one_hour), GivenAt(id, now_ - 6 * one_hour)}), now_);
  const std::shared_ptr<const Catalogue> shown = events.Shown(now_, 7, {});
  EXPECT_NE(shown->Find("ErdbebenBro7-17"), nullptr);
  for (const Event &event : shown->events())
    EXPECT_TRUE(IsEventId(event.id)) << event.id.toStdString();
}

TEST_F(LiveEventsTest, TakeUpThousandsThatShareAnId) {
  const auto all_with_it = [this] {
    std::vector<FeedEvent> events;
    for (int i = 0; i < 50'000; ++i)
      events.push_back(AlsoKnownAs(Given(QString("ci%1").arg(i), now_), {"us1"}));
    return events;
  };
  EXPECT_EQ(Take(all_with_it()).records.size(), 50'000U);
  PassMinute();
  EXPECT_EQ(Take(all_with_it()).records.size(), 50'000U);
  PassMinute();
  const EventChanges changes = Take({Given("us1", now_)});
  EXPECT_GT(changes.records.size(), 1U) << "some are known to be that event";
  EXPECT_LT(changes.records.size(), 100U);
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
