#include <gtest/gtest.h>

#include "support/program/report_rig.h"

namespace borvane {
namespace {

TEST(SubmitReportEntry, OpensTheFormAndThenSaysThatTheNameStaysHere) {
  ReportRig rig;
  rig.screen().on_load = [&rig](FormBase &form) {
    if (form.name() != "ComPart")
      return;
    auto &report = static_cast<ReportForm &>(form);
    rig.watch(report.Label2(1), report.Label2(1).Caption, "key");
  };
  rig.click(frmRecords->mnuReportIt);
  EXPECT_EQ(rig.trace({"load", "set", "show", "message", "request"}),
            (Lines{"load ComPart", std::string("set key=") + ReportRig::key, "show ComPart",
                   "message [Borvane] Your name will not be sent over the Internet (OK)"}));
  EXPECT_TRUE(ReportRig::form().Label2(1).Visible());
  EXPECT_TRUE(ReportRig::form().Frame1.Visible());
  EXPECT_EQ(ReportRig::form().Frame1.Top(), 510);
}

TEST(SubmitReportEntry, NamesTheRowThatIsSelectedNow) {
  ReportRig rig;
  BarRig::list({BarRig::row("5.2", "a"), BarRig::row("3.0", "b", "2018/02/06", "12:00:00")});
  rig.open();
  ListRig::events().ListItems.Choose(2);
  rig.open();
  EXPECT_EQ(ReportRig::form().Label2(1).Caption(), "3.0-2018:02:06-12:00:00-34.495N-118.667W");
}

TEST(SubmitReportEntry, BringsAnOpenFormToTheFrontAndKeepsItsAnswers) {
  ReportRig rig;
  rig.fill_in();
  rig.click(frmRecords->mnuReportIt);
  EXPECT_EQ(rig.trace({"load", "unload", "show"}), Lines{"show ComPart"});
  EXPECT_EQ(ReportRig::name().Text(), "Ann Lee");
  EXPECT_EQ(ReportRig::form().Combo2.Text(), "weak");
}

TEST(SubmitReportEntry, LeavesTheThanksInFront) {
  RecordProperty("quirk", "second-report-needs-cancel");
  ReportRig rig;
  rig.fill_in();
  rig.take_report();
  rig.submit();
  EXPECT_EQ(ReportRig::form().Frame1.Top(), 6825);
  rig.open();
  EXPECT_EQ(ReportRig::form().Frame1.Top(), 510);
  EXPECT_TRUE(ReportRig::form().Frame1.Visible());
  EXPECT_TRUE(ReportRig::form().Frame2.Visible());

  rig.cancel();
  rig.open();
  EXPECT_FALSE(ReportRig::form().Frame2.Visible());
}

TEST(SubmitReportEntry, BringsTheFormBackAfterTheList) {
  ReportRig rig;
  rig.click(frmRecords->mnuViewReps);
  rig.open();
  EXPECT_TRUE(ReportRig::form().Frame1.Visible());
  EXPECT_TRUE(ReportRig::form().ListView1.Visible());
}

TEST(ViewReportsEntry, ShowsTheListAloneAndFillsItThen) {
  ReportRig rig;
  rig.serve(ReportRig::geta, "235|" + std::string(ReportRig::key) + "|42|2.5|0|0|90210\n");
  rig.click(frmRecords->mnuViewReps);
  ReportForm &form = ReportRig::form();
  EXPECT_FALSE(form.Frame1.Visible());
  EXPECT_FALSE(form.Frame2.Visible());
  EXPECT_TRUE(form.ListView1.Visible());
  EXPECT_EQ(form.Label2(1).Caption(), ReportRig::key);
  EXPECT_EQ(rig.trace({"load", "show", "request", "message"}),
            (Lines{"load ComPart", "show ComPart", "request " + ReportRig::geta}));
  EXPECT_EQ(ReportRig::report_rows(), Lines{"90210 2.5 1"});
}

TEST(ViewReportsEntry, HidesAFormThatIsBeingFilledIn) {
  ReportRig rig;
  rig.fill_in();
  rig.click(frmRecords->mnuViewReps);
  EXPECT_FALSE(ReportRig::form().Frame1.Visible());
  rig.open();
  EXPECT_TRUE(ReportRig::form().Frame1.Visible());
  EXPECT_EQ(ReportRig::age().Text(), "42");
}

TEST(ReportEntries, EndTheProgramWithoutASelectedRow) {
  for (MenuItem RecordsForm::*const entry : {&RecordsForm::mnuReportIt, &RecordsForm::mnuViewReps}) {
    ReportRig rig;
    ListRig::events().ListItems.Choose(0);
    rig.click((*frmRecords).*entry);
    EXPECT_EQ(rig.trace({"error", "show"}), Lines{"error report 91 Object variable not set"});
  }
}

}  // namespace
}  // namespace borvane
