#include "reports/reporter_slots.h"

#include <gtest/gtest.h>

#include "basic/number.h"
#include "support/program/report_rig.h"

namespace borvane {
namespace {

/// The slot that leaving the name's box with `name` finds, and whether the form goes on.
int SlotOf(ReportRig &rig, std::string_view name) {
  rig.answer(ReportRig::name(), name);
  return rig.state().UserSlot;
}

TEST(ReporterSlot, IsTheFirstOneInAnEmptyStore) {
  ReportRig rig;
  rig.open();
  EXPECT_EQ(rig.state().UserSlot, -1);
  EXPECT_EQ(SlotOf(rig, "Ann"), 1);
  EXPECT_TRUE(rig.state().FormTouched);
}

TEST(ReporterSlot, IsTheOneWithTheNameAndTheSearchStopsThere) {
  ReportRig rig;
  rig.store()["User1"] = "Bob";
  rig.store()["User2"] = "Ann";
  rig.store()["User3"] = "Ann";
  rig.open();
  EXPECT_EQ(SlotOf(rig, "Ann"), 2);
  EXPECT_EQ(rig.trace({"read"}), (Lines{"read User1", "read User2", "read UserRep2"}));
  EXPECT_TRUE(rig.state().FormTouched);
}

TEST(ReporterSlot, IsFoundByTheProperCaseOfTheNameAndNoOther) {
  ReportRig rig;
  rig.store()["User1"] = "ann lee";
  rig.store()["User2"] = "Ann Lee";
  rig.open();
  EXPECT_EQ(SlotOf(rig, "ANN lee"), 2);
  EXPECT_EQ(ReportRig::name().Text(), "Ann Lee");
  EXPECT_EQ(SlotOf(rig, "Ann Lee "), 3) << "a blank more is another name";
}

TEST(ReporterSlot, OfANewNameIsAfterTheHighestInUse) {
  ReportRig rig;
  rig.store()["User1"] = "Bob";
  rig.store()["User7"] = "Eve";
  rig.open();
  EXPECT_EQ(SlotOf(rig, "Ann"), 8);
  const Lines reads = rig.trace({"read"});
  EXPECT_EQ(reads.size(), 20U) << "all twenty and no day";
  EXPECT_EQ(reads.back(), "read User20");
}

TEST(ReporterSlot, OfTheTwentyFirstNameIsTwentyOneAndSoIsThatOfAllLaterOnes) {
  RecordProperty("quirk", "reporters-from-21-on-share-a-slot");
  ReportRig rig;
  for (int slot = 1; slot <= 20; ++slot)
    rig.store()["User" + IntegerText(slot)] = "Reporter " + IntegerText(slot);
  rig.open();
  EXPECT_EQ(SlotOf(rig, "Reporter 20"), 20);
  EXPECT_EQ(SlotOf(rig, "Reporter 21"), 21);
  rig.store()["User21"] = "Reporter 21";
  EXPECT_EQ(SlotOf(rig, "Reporter 22"), 21);
  EXPECT_EQ(SlotOf(rig, "Reporter 21"), 21);
  EXPECT_EQ(SlotOf(rig, ""), 21) << "no slot is unused";
}

TEST(ReporterSlot, OfAnEmptyNameIsTheFirstUnusedOne) {
  RecordProperty("quirk", "empty-name-is-the-first-unused-slot");
  ReportRig rig;
  rig.store()["User1"] = "Bob";
  rig.store()["User3"] = "Eve";
  rig.open();
  EXPECT_EQ(SlotOf(rig, ""), 2);
  EXPECT_EQ(rig.trace({"read"}), (Lines{"read User1", "read User2", "read UserRep2"}));
  EXPECT_TRUE(rig.state().FormTouched);
}

TEST(ReporterSlot, IsMinusOneAgainInEachWindow) {
  ReportRig rig;
  rig.open();
  EXPECT_EQ(SlotOf(rig, "Ann"), 1);
  rig.cancel();
  EXPECT_EQ(rig.state().UserSlot, 1) << "until another window loads";
  rig.open();
  EXPECT_EQ(rig.state().UserSlot, -1);
}

// One report a day.

TEST(DailyReport, IsRefusedWhenTheStoreHasTodayForTheReporter) {
  ReportRig rig;
  rig.store()["User1"] = "Ann";
  rig.store()["UserRep1"] = "02-07-2018";
  rig.open();
  rig.answer(ReportRig::name(), "ann");
  EXPECT_EQ(rig.trace({"message", "hide", "unload"}),
            (Lines{"message [Borvane] You already filled a report today (OK)", "hide ComPart", "unload ComPart"}));
  EXPECT_EQ(ComPart.IfLoaded(), nullptr);
  EXPECT_FALSE(rig.state().FormTouched);
  EXPECT_EQ(rig.state().UserSlot, 1);
}

TEST(DailyReport, IsAcceptedWhenTheStoreHasAnotherDayOrAnotherReporter) {
  for (const char *day : {"", "02-06-2018", "2-7-2018", "07-02-2018", "02-07-2018 "}) {
    ReportRig rig;
    rig.store()["User1"] = "Ann";
    rig.store()["UserRep1"] = day;
    rig.store()["UserRep2"] = "02-07-2018";
    rig.open();
    rig.answer(ReportRig::name(), "ann");
    EXPECT_EQ(rig.trace({"message", "unload"}), Lines{}) << day;
    EXPECT_TRUE(rig.state().FormTouched) << day;
  }
}

TEST(DailyReport, CountsForAnEmptyNameAsWell) {
  ReportRig rig;
  rig.store()["UserRep1"] = "02-07-2018";
  rig.open();
  rig.answer(ReportRig::name(), "");
  EXPECT_EQ(rig.trace({"message"}), Lines{"message [Borvane] You already filled a report today (OK)"});
  EXPECT_EQ(ComPart.IfLoaded(), nullptr);
}

TEST(DailyReport, LeavesAWindowAloneThatWasOpenedInsideTheMessage) {
  ReportRig rig;
  rig.store()["User1"] = "Ann";
  rig.store()["UserRep1"] = "02-07-2018";
  rig.open();
  rig.message_box().DuringNext([&rig] {
    rig.cancel();
    ComPart->Show();
  });
  rig.answer(ReportRig::name(), "ann");
  ASSERT_NE(ComPart.IfLoaded(), nullptr);
  EXPECT_TRUE(ComPart->IsShown());
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST(DailyReport, IsRefusedOnceWhenTheNameIsLeftByClosingTheWindow) {
  ReportRig rig;
  rig.store()["User1"] = "Ann";
  rig.store()["UserRep1"] = "02-07-2018";
  rig.open();
  rig.type(ReportRig::name(), "ann");
  rig.screen().on_hide = [&rig](FormBase &form) { rig.leave(static_cast<ReportForm &>(form).Text1(0)); };
  rig.cancel();
  EXPECT_EQ(rig.trace({"message", "hide", "unload", "error"}),
            (Lines{"hide ComPart", "message [Borvane] You already filled a report today (OK)", "unload ComPart"}));
  EXPECT_EQ(ComPart.IfLoaded(), nullptr);
}

// What a report leaves in the store.

TEST(SavedReporter, IsTheNameAndThenTheDayInItsPlace) {
  RecordProperty("quirk", "report-day-replaces-the-name");
  ReportRig rig;
  rig.fill_in();
  rig.take_report();
  rig.submit();
  EXPECT_EQ(rig.trace({"write"}), (Lines{"write User1=Ann Lee", "write User1=02-07-2018"}));
  EXPECT_FALSE(rig.store().Has("UserRep1"));

  // The same name on the same day is another reporter.
  rig.cancel();
  rig.fill_in();
  EXPECT_EQ(rig.state().UserSlot, 2);
  rig.submit();
  EXPECT_TRUE(rig.store()["User2"] == "02-07-2018");
  EXPECT_TRUE(ReportRig::form().Label2(2).Visible());
}

TEST(SavedReporter, HasTheDayWithTwoDigitsForMonthAndDay) {
  ReportRig rig;
  rig.clock().Set({.year = 2007, .month = 11, .day = 3, .hour = 23});
  rig.fill_in();
  rig.take_report();
  rig.submit();
  EXPECT_TRUE(rig.store()["User1"] == "11-03-2007");
}

TEST(SavedReporter, IsUserMinusOneWhenTheNameWasNeverLeft) {
  RecordProperty("quirk", "name-never-left-is-user-minus-one");
  ReportRig rig;
  rig.open();
  rig.type(ReportRig::name(), "ann lee");
  rig.answer(ReportRig::age(), "42");
  rig.answer(ReportRig::zip(), "90210");
  rig.choose_all();
  rig.take_report();
  rig.clear_trace();
  rig.submit();
  EXPECT_EQ(rig.trace({"write"}), (Lines{"write User-1=ann lee", "write User-1=02-07-2018"}));
}

TEST(SavedReporter, HasSlotTwentyOneAfterTwenty) {
  ReportRig rig;
  for (int slot = 1; slot <= 20; ++slot)
    rig.store()["User" + IntegerText(slot)] = "02-06-2018";
  rig.fill_in();
  rig.take_report();
  rig.submit();
  EXPECT_EQ(rig.trace({"write"}), (Lines{"write User21=Ann Lee", "write User21=02-07-2018"}));
}

}  // namespace
}  // namespace borvane
