#include <gtest/gtest.h>

#include "support/mirror/live_events_under_test.h"

// What is the same event, whatever the feeds call it.

namespace borvane::mirror {
namespace {

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

TEST_F(LiveEventsTest, LoseAnEventThatIsDeletedUnderAnotherOfItsIds) {
  Take({AlsoKnownAs(Given("ci1"), {"us1"})});
  PassMinute();
  Take({Deleted("us1")});
  EXPECT_EQ(Ids(), QStringList());
}

TEST_F(LiveEventsTest, DropIdsThatNoEventCanHave) {
  const EventChanges changes = Take({AlsoKnownAs(Given("ci1"), {"a/b", "", "us1", "us1", "ci1"})});
  ASSERT_EQ(changes.records.size(), 1U);
  EXPECT_EQ(changes.records[0].other_ids, QStringList("us1"));
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

}  // namespace
}  // namespace borvane::mirror
