#include "reports/show_reports.h"

#include <gtest/gtest.h>

#include "support/program/report_rig.h"

namespace borvane {
namespace {

/// A report as the service stores it.
std::string Report(std::string_view zip, std::string_view magnitude, std::string_view event = ReportRig::key) {
  return "235|" + std::string(event) + "|42|" + std::string(magnitude) + "|0|1|" + std::string(zip) + "\n";
}

/// An open list of reports.
struct ListOfReports : testing::Test {
  ListOfReports() {
    rig.serve(ReportRig::geta, "no reports");
    rig.click(frmRecords->mnuViewReps);
    rig.clear_trace();
  }

  /// The service answers with `answer`, and the list after that.
  Lines rows_after(std::string_view answer) {
    rig.serve(ReportRig::geta, answer);
    rig.happen([this] { ShowReports(fields); });
    return ReportRig::report_rows();
  }

  ReportRig rig;
  ReportFields fields;
};

TEST_F(ListOfReports, IsAskedForByTheAreaThatTheRecordsWindowShows) {
  frmRecords->Label2(0).Caption = "San Juan Bautista, CA";
  rig.happen([this] { ShowReports(fields); });
  EXPECT_EQ(rig.trace({"request", "message"}), Lines{"request " + service + "cmd=geta&map=San Juan Bautista, CA"});
}

TEST_F(ListOfReports, IsEmptyWithAMessageWhenThereAreNone) {
  EXPECT_EQ(rows_after(""), Lines{});
  EXPECT_EQ(rig.trace({"message"}), Lines{"message [Borvane] No reports found (OK)"});
}

TEST_F(ListOfReports, HasARowForEachZipWithItsMeanAndCount) {
  EXPECT_EQ(rows_after(Report("90210", "2.5") + Report("10001", "4") + Report("90210", "3.5")),
            (Lines{"90210 3 2", "10001 4 1"}));
  EXPECT_EQ(rig.trace({"message"}), Lines{});
}

TEST_F(ListOfReports, HasTheReportsOnItsEventAlone) {
  const std::string key = ReportRig::key;
  EXPECT_EQ(rows_after(Report("1", "2") + Report("2", "2", key + " ") + Report("3", "2", "") + Report("4", "2", "x")),
            Lines{"1 2 1"});
}

TEST_F(ListOfReports, GroupsReportsWithoutAZip) {
  EXPECT_EQ(rows_after(Report("", "2") + Report("", "4")), Lines{" 3 2"});
}

TEST_F(ListOfReports, TellsZipsApartByEveryCharacter) {
  EXPECT_EQ(rows_after(Report("a", "1") + Report("A", "1") + Report(" a", "1")), (Lines{"a 1 1", "A 1 1", " a 1 1"}));
}

TEST_F(ListOfReports, ShowsMeansWithUpToFifteenDigits) {
  EXPECT_EQ(rows_after(Report("1", "1") + Report("1", "1") + Report("1", "0")), Lines{"1 0.666666666666667 3"});
  EXPECT_EQ(rows_after(Report("2", "1.571429") + Report("2", "2.285714")).back(), "2 1.9285715 2");
}

TEST_F(ListOfReports, TakesTheNumberAtTheStartOfAMagnitude) {
  EXPECT_EQ(rows_after(Report("1", "2x") + Report("2", "x") + Report("3", ".5714286") + Report("4", "-3") +
                       Report("5", " 7 8")),
            (Lines{"1 2 1", "2 0 1", "3 0.5714286 1", "4 -3 1", "5 7 1"}));
}

// The lines.

TEST_F(ListOfReports, TakesWhatFollowsTheLastSeparatorForTheZip) {
  const std::string key = ReportRig::key;
  EXPECT_EQ(rows_after("235|" + key + "|42|2|0|0|seventh|eighth|ninth\n"), Lines{"ninth 2 1"});
  EXPECT_EQ(fields[6], "ninth");
  EXPECT_EQ(fields[7], "eighth");
  EXPECT_EQ(rows_after("235|" + key + "|42|2|0|0|seventh|\n").back(), " 2 1") << "a separator at the end";
}

TEST_F(ListOfReports, KeepsOlderFieldsWhereALineIsShort) {
  RecordProperty("quirk", "short-lines-keep-older-fields");
  EXPECT_EQ(rows_after(Report("1", "2") + "alone\n"), (Lines{"1 2 1", "alone 2 1"}));
  EXPECT_EQ(fields[0], "235");
  EXPECT_EQ(rows_after(Report("1", "2", "other") + "x\n").size(), 2U) << "now of another event";
}

TEST_F(ListOfReports, TakesAnEmptyLineForAnEmptyZip) {
  EXPECT_EQ(rows_after(Report("1", "2") + "\n"), (Lines{"1 2 1", " 2 1"}));
}

TEST_F(ListOfReports, KeepsTheFieldsFromCallToCallOfOneOwner) {
  rows_after(Report("1", "2"));
  EXPECT_EQ(rows_after("2\n"), (Lines{"1 2 1", "2 2 1"}));
}

TEST_F(ListOfReports, StopsWithSumsAtALineWithoutALineFeed) {
  RecordProperty("quirk", "cut-off-answer-leaves-sums");
  EXPECT_EQ(rows_after(Report("1", "2") + Report("1", "4") + "235|" + ReportRig::key + "|42|9|0|0|1"), Lines{"1 6 2"});
  EXPECT_EQ(rows_after("no line feed at all"), Lines{"1 6 2"});
}

TEST_F(ListOfReports, TakesElevenSeparatorsAndFailsAtTheTwelfth) {
  const std::string start = Report("1", "2") + Report("1", "4") + "235|" + std::string(ReportRig::key) + "|42|6";
  EXPECT_EQ(rows_after(start + "|4|5|6|7|8|9|10|1\n"), Lines{"1 4 3"});
  rig.cancel();
  ComPart->Label2(1).Caption = ReportRig::key;
  EXPECT_EQ(rows_after(start + "|4|5|6|7|8|9|10|11|1\n" + Report("2", "3")), Lines{"1 6 2"})
      << "neither its row nor any after it, and no means";
  EXPECT_EQ(rig.trace({"message", "error"}), Lines{});
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST_F(ListOfReports, FailsAtALineFeedBeyondSixteenBits) {
  const std::string head = "235|" + std::string(ReportRig::key) + "|42|2|0|0|";
  const std::string longest(32766 - head.size(), '9');
  EXPECT_EQ(rows_after(head + longest + "\n").size(), 1U);
  EXPECT_EQ(rows_after(Report("1", "2") + head + longest + "9\n" + Report("2", "2")).size(), 2U);
  EXPECT_EQ(rows_after(Report("3", "2") + Report("3", "4") + std::string(40'000, '|') + "\n").back(), "3 6 2")
      << "a sum: the failure comes before the means";
  EXPECT_EQ(rig.trace({"message", "error"}), Lines{});
}

TEST_F(ListOfReports, DoesNotMindTheAnswersLength) {
  std::string answer;
  while (answer.size() < 10'000'000)
    answer += Report("90210", "2.5") + Report("1", "2", "other");
  EXPECT_TRUE(rows_after(answer)[0].starts_with("90210 2.5 "));
  const Lines rows = ReportRig::report_rows();
  EXPECT_EQ(rows_after(std::string(10'000'000, 'x')), rows);
  EXPECT_EQ(rows_after(std::string(10'000'000, '|')), rows);
  EXPECT_TRUE(rows_after(Report("90210", "0") + std::string(10'000'000, '|'))[0].starts_with("90210 2.5 "))
      << "a sum without a mean";
}

// The rows that are there already.

TEST_F(ListOfReports, AddsToTheRowsThatItHas) {
  RecordProperty("quirk", "reports-pile-up-in-the-list");
  rows_after(Report("1", "2") + Report("1", "4"));
  EXPECT_EQ(rows_after(Report("1", "2") + Report("1", "4")), Lines{"1 2.25 4"}) << "2 and 4 added to the mean of 3";
  ReportRig::form().Label2(1).Caption = "another event";
  EXPECT_EQ(rows_after(Report("1", "1", "another event")), Lines{"1 0.65 5"});
  rig.cancel();
  ComPart->Label2(1).Caption = ReportRig::key;
  EXPECT_EQ(rows_after(Report("1", "2")), Lines{"1 2 1"}) << "in a new window";
}

TEST_F(ListOfReports, TakesTheMeansAgainWithoutAReportOnItsEvent) {
  rows_after(Report("1", "2") + Report("1", "4"));
  EXPECT_EQ(rows_after(Report("1", "9", "other")), Lines{"1 1.5 2"});
}

TEST_F(ListOfReports, AddsToEachRowOfAZip) {
  ReportRig::form().ListView1.ListItems.Add({.Text = "1", .SubItemTexts = {"2", "1"}});
  ReportRig::form().ListView1.ListItems.Add({.Text = "1", .SubItemTexts = {"4", "1"}});
  EXPECT_EQ(rows_after(Report("1", "6")), (Lines{"1 4 2", "1 5 2"}));
}

TEST_F(ListOfReports, LosesTheFractionsOfSumsWithADecimalComma) {
  RecordProperty("quirk", "decimal-comma-drops-fractions");
  rig.region().SetDecimalSeparator(',');
  EXPECT_EQ(rows_after(Report("1", "2.5")), Lines{"1 2,5 1"}) << "the text of a single report is read as it came";
  rig.cancel();
  ComPart->Label2(1).Caption = ReportRig::key;
  EXPECT_EQ(rows_after(Report("1", "2.5") + Report("1", "3.75") + Report("1", "1")), Lines{"1 2,33333333333333 3"})
      << "6,25 counts as 6";
}

// Failures.

TEST_F(ListOfReports, StaysAsItIsWhenTheRequestFails) {
  rows_after(Report("1", "2") + Report("1", "4"));
  rig.refuse(ReportRig::geta);
  rig.happen([this] { ShowReports(fields); });
  EXPECT_EQ(ReportRig::report_rows(), Lines{"1 3 2"});
  EXPECT_EQ(rig.trace({"message", "error"}), Lines{});
}

TEST_F(ListOfReports, KeepsSumsWhenANumberOverflows) {
  for (const char *magnitude : {"1e999", "-1e999"}) {
    EXPECT_EQ(rows_after(Report("1", "2") + Report("1", "4") + Report("1", magnitude) + Report("2", "1")),
              Lines{"1 6 2"});
    rig.cancel();
    ComPart->Label2(1).Caption = ReportRig::key;
  }
  EXPECT_EQ(rows_after(Report("1", "1e308") + Report("1", "1e308")), Lines{"1 1e308 1"});
  EXPECT_EQ(rig.trace({"message", "error"}), Lines{});
}

TEST_F(ListOfReports, KeepsTheMeansInFrontOfARowWithoutReports) {
  ListRows &rows = ReportRig::form().ListView1.ListItems;
  rows.Add({.Text = "1", .SubItemTexts = {"4", "2"}});
  rows.Add({.Text = "2", .SubItemTexts = {"4", "0"}});
  rows.Add({.Text = "3", .SubItemTexts = {"4", "2"}});
  EXPECT_EQ(rows_after(Report("4", "9")), (Lines{"1 2 2", "2 4 0", "3 4 2", "4 9 1"}));
}

TEST_F(ListOfReports, HoldsNoFaultThatIsNoFailureOfTheProgram) {
  rig.http().Break(ReportRig::geta);
  rig.happen([this] { ShowReports(fields); });
  EXPECT_EQ(rig.trace({"error", "end"}), (Lines{"error report 0 broken", "end 1"}));
}

// What happens while the service is being asked.

TEST_F(ListOfReports, IsFilledInANewHiddenWindowWhenItsOwnWasClosed) {
  rig.during_request(ReportRig::geta, [this] { rig.cancel(); });
  EXPECT_EQ(rows_after(Report("1", "2")), Lines{}) << "whose event is none";
  EXPECT_EQ(rig.trace({"load", "unload", "show", "message", "error"}), (Lines{"unload ComPart", "load ComPart"}));
  EXPECT_FALSE(ComPart->IsShown());
}

TEST_F(ListOfReports, GoesByTheEventThatIsNamedWhenTheAnswerComes) {
  rig.during_request(ReportRig::geta, [] { ReportRig::form().Label2(1).Caption = "later"; });
  EXPECT_EQ(rows_after(Report("1", "2") + Report("2", "2", "later")), Lines{"2 2 1"});
}

TEST_F(ListOfReports, IsAskedForOnceWhenItIsOpenedTwice) {
  rig.during_request(ReportRig::geta, [this] { rig.click(frmRecords->mnuViewReps); });
  EXPECT_EQ(rows_after(Report("1", "2")), Lines{"1 2 1"});
  EXPECT_EQ(rig.trace({"request", "message", "error"}), Lines{"request " + ReportRig::geta});
}

}  // namespace
}  // namespace borvane
