#include "scan/biggest_event.h"

#include <algorithm>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "support/failure_of.h"
#include "support/program/pages.h"
#include "support/program/watching_rig.h"

namespace borvane {
namespace {

EventFields Event(std::string_view magnitude, std::string_view place = "13 km ( 8 mi) NNE of Somewhere, CA") {
  EventFields fields(20);
  fields(1) = magnitude;
  fields(2) = "2018/02/07";
  fields(3) = "21:24:33";
  fields(7) = place;
  return fields;
}

void Keep(EventFields fields) { KeepBiggest(fields); }

Lines StoreAccess(const Rig &rig) { return rig.trace({"read", "write"}); }

TEST(KeepBiggest, StoresMagnitudePlaceTimeAndDateInThisOrder) {
  Rig rig;
  Keep(Event("2.1"));
  EXPECT_EQ(StoreAccess(rig),
            (Lines{"read LastBig", "write LastBig=2.1", "write BigPlace=13 km ( 8 mi) NNE of Somewhere, CA",
                   "write BigTime=21:24:33", "write BigDate=2018/02/07"}));
}

TEST(KeepBiggest, KeepsTheOlderOfTwoEqualEvents) {
  Rig rig;
  Keep(Event("2.1", "the older"));
  rig.clear_trace();
  Keep(Event("2.1", "the newer"));
  Keep(Event("2.10", "the newer"));
  EXPECT_EQ(StoreAccess(rig), (Lines{"read LastBig", "read LastBig"}));
  EXPECT_EQ(rig.store()["BigPlace"], "the older");
}

TEST(KeepBiggest, LeavesAWeakerEventAside) {
  Rig rig;
  rig.store()["LastBig"] = "5.9";
  Keep(Event("5.8"));
  EXPECT_EQ(StoreAccess(rig), Lines{"read LastBig"});
}

TEST(KeepBiggest, ComparesByNumberAndStoresTheTextAsItIs) {
  Rig rig;
  rig.store()["LastBig"] = "9.5ml";
  Keep(Event("10.2Mw*"));
  EXPECT_EQ(rig.store()["LastBig"], "10.2Mw*");
  Keep(Event(" 9.9"));
  EXPECT_EQ(rig.store()["LastBig"], "10.2Mw*");
}

TEST(KeepBiggest, ComparesInDoublePrecision) {
  Rig rig;
  rig.store()["LastBig"] = "4.00000000000001";
  Keep(Event("4.00000000000002"));
  EXPECT_EQ(rig.store()["LastBig"], "4.00000000000002");
}

TEST(KeepBiggest, NeverStoresAMagnitudeThatIsNoNumberOrNotAboveZero) {
  for (const char *magnitude : {"", "abc", "M 4.5", "0.0", "-1.2"}) {
    Rig rig;
    Keep(Event(magnitude));
    EXPECT_EQ(StoreAccess(rig), Lines{"read LastBig"}) << magnitude;
  }
}

TEST(KeepBiggest, CountsAStoredTextThatIsNoNumberAsZero) {
  Rig rig;
  rig.store()["LastBig"] = "abc";
  Keep(Event("0.1"));
  EXPECT_EQ(rig.store()["LastBig"], "0.1");
}

TEST(KeepBiggest, StoresTheMagnitudeOfARowWithoutAPlaceAndFails) {
  RecordProperty("quirk", "magnitude-stored-before-the-missing-place");
  Rig rig;
  rig.store()["BigPlace"] = "the older";
  EventFields fields(4);
  fields(1) = "6.1";
  EXPECT_EQ(FailureOf([&] { KeepBiggest(fields); }), static_cast<int>(Failure::Subscript));
  EXPECT_EQ(StoreAccess(rig), (Lines{"read LastBig", "write LastBig=6.1"}));
  EXPECT_EQ(rig.store()["BigPlace"], "the older");
}

TEST(KeepBiggest, FailsOnAStoredMagnitudeBeyondAllNumbers) {
  Rig rig;
  rig.store()["LastBig"] = "1e999";
  EXPECT_EQ(FailureOf([] { Keep(Event("5.0")); }), static_cast<int>(Failure::Overflow));
}

TEST(KeepBiggest, AsksTheStoreAgainForEveryEvent) {
  Rig rig;
  Keep(Event("5.0"));
  rig.store()["LastBig"] = "1.0";  // by another Borvane
  Keep(Event("2.0"));
  EXPECT_EQ(rig.store()["LastBig"], "2.0");
}

TEST(KeepBiggest, StoresUnderEitherChoiceOfTheDisplay) {
  for (const char *choice : {"Update on refresh!", "Keep highest Magnitude"}) {
    WatchingRig rig;
    rig.choose(conffrm->Combo1, choice);
    rig.serve(los_angeles, Page(Row("4.5", "the strongest")));
    rig.refresh();
    EXPECT_EQ(rig.store()["LastBig"], "4.5") << choice;
    EXPECT_EQ(rig.store()["BigPlace"], "the strongest") << choice;
  }
}

TEST(KeepBiggest, KeepsTheStrongestEventOverARestart) {
  std::map<std::string, std::string> stored;
  {
    WatchingRig rig;
    rig.serve(los_angeles, Page(Row("4.5", "the strongest")));
    rig.refresh();
    for (const std::string &name : rig.store().Names())
      stored[name] = rig.store().TextOf(name);
  }
  Rig rig;
  for (const auto &[name, text] : stored)
    rig.store()[name] = text;
  rig.start();
  rig.serve(los_angeles, Page(Row("4.4", "a weaker one") + Row("4.5", "one as strong")));
  constexpr int r_key = 82;
  rig.key(r_key);
  EXPECT_EQ(Newest(), "4.4");
  EXPECT_EQ(rig.store()["LastBig"], "4.5");
  EXPECT_EQ(rig.store()["BigPlace"], "the strongest");
  EXPECT_EQ(rig.store()["BigTime"], "01:26:13");
  EXPECT_EQ(rig.store()["BigDate"], "2018/02/07");
}

TEST(KeepBiggest, IsGivenEveryRowOfAListAndNotOnlyTheNewest) {
  WatchingRig rig;
  rig.serve(los_angeles, Page(Row("2.0", "first") + Row("4.5", "second") + Row("3.0", "third") + Row("4.6", "last")));
  rig.refresh();
  EXPECT_EQ(rig.store()["LastBig"], "4.6");
  EXPECT_EQ(rig.store()["BigPlace"], "last");
  EXPECT_EQ(rig.store()["BigTime"], "01:26:13");
  EXPECT_EQ(rig.store()["BigDate"], "2018/02/07");
  const Lines written = rig.trace({"write"});
  EXPECT_EQ(std::count_if(written.begin(), written.end(),
                          [](const std::string &line) { return line.starts_with("write LastBig="); }),
            3);
}

}  // namespace
}  // namespace borvane
