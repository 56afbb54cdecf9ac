#include "reports/report_records.h"

#include <gtest/gtest.h>

#include "support/program/report_rig.h"

namespace borvane {
namespace {

Lines FieldsOf(const std::string &record) {
  Lines fields = {""};
  for (const char c : record) {
    if (c == '|')
      fields.emplace_back();
    else
      fields.back() += c;
  }
  return fields;
}

TEST(SummaryRecord, HasSevenFieldsInTheirOrder) {
  ReportRig rig;
  rig.open();
  ReportRig::age().Text = "42";
  ReportRig::zip().Text = "90210";
  ReportRig::form().Check2(ReportForm::check_scared).Value = 1;
  EXPECT_EQ(FieldsOf(SummaryRecord(ReportRig::form(), 5.571429F)),
            (Lines{VersionDigits(), ReportRig::key, "42", "5.571429", "1", "0", "90210"}));
  ReportRig::form().Check2(ReportForm::check_scared).Value = 0;
  ReportRig::form().Check2(ReportForm::check_at_school).Value = 1;
  EXPECT_EQ(FieldsOf(SummaryRecord(ReportRig::form(), 5.571429F)),
            (Lines{VersionDigits(), ReportRig::key, "42", "5.571429", "0", "1", "90210"}));
}

TEST(SummaryRecord, HasTheMagnitudeWithAPointAndNoZeroInFrontOfIt) {
  ReportRig rig;
  rig.region().SetDecimalSeparator(',');
  rig.open();
  EXPECT_EQ(FieldsOf(SummaryRecord(ReportRig::form(), .5714286F))[3], ".5714286");
  EXPECT_EQ(FieldsOf(SummaryRecord(ReportRig::form(), -.2857143F))[3], "-.2857143");
  EXPECT_EQ(FieldsOf(SummaryRecord(ReportRig::form(), 3))[3], "3");
  EXPECT_EQ(FieldsOf(SummaryRecord(ReportRig::form(), 0))[3], "0");
}

TEST(DetailRecord, HasSeventeenFieldsOfWhichTheSecondIsEmpty) {
  RecordProperty("quirk", "detail-record-has-an-empty-field");
  ReportRig rig;
  rig.open();
  EXPECT_EQ(FieldsOf(DetailRecord(ReportRig::form())),
            (Lines{VersionDigits(), "", "", "", "", "", "0", "0", "0", "0", "0", "0", "0", "0", "-1", "-1", "-1"}));
  ReportRig::age().Text = "42";
  ReportRig::zip().Text = "90210";
  ReportRig::school().Text = "Hill School";
  ReportRig::comments().Text = "It shook.";
  ReportRig::form().Check1.Value = 1;
  rig.choose_all("Run to exterior", "violent!", "Higher!");
  EXPECT_EQ(FieldsOf(DetailRecord(ReportRig::form())),
            (Lines{VersionDigits(), "", "42", "90210", "Hill School", "It shook.", "1", "0", "0", "0", "0", "0", "0",
                   "0", "5", "4", "13"}));
}

TEST(DetailRecord, HasEachBoxInItsOwnField) {
  for (int box = 0; box < 7; ++box) {
    ReportRig rig;
    rig.open();
    ReportRig::form().Check2(box).Value = 1;
    const Lines fields = FieldsOf(DetailRecord(ReportRig::form()));
    ASSERT_EQ(fields.size(), 17U);
    for (int i = 0; i < 7; ++i)
      EXPECT_EQ(fields[static_cast<std::size_t>(7 + i)], i == box ? "1" : "0") << box;
  }
}

TEST(DetailRecord, HasMinusOneForATextThatWasTyped) {
  ReportRig rig;
  rig.open();
  rig.choose_all();
  ReportRig::form().Combo1.Text = "ran";
  ReportRig::form().Combo3.Text = "in a boat";
  const Lines fields = FieldsOf(DetailRecord(ReportRig::form()));
  EXPECT_EQ((Lines{fields.end() - 3, fields.end()}), (Lines{"-1", "0", "-1"}));
}

TEST(ReportRecords, NeverHaveTheName) {
  ReportRig rig;
  rig.open();
  rig.answer(ReportRig::name(), "zebediah");
  EXPECT_EQ(SummaryRecord(ReportRig::form(), 1).find("ebediah"), std::string::npos);
  EXPECT_EQ(DetailRecord(ReportRig::form()).find("ebediah"), std::string::npos);
}

TEST(ReportRecords, HaveEveryTextAsItIs) {
  RecordProperty("quirk", "typed-separators-shift-fields");
  ReportRig rig;
  rig.open();
  ReportRig::comments().Text = "a|b&zip=1#\xE9 %41+\nsecond line";
  EXPECT_EQ(DetailRecord(ReportRig::form()),
            VersionDigits() + "|||||a|b&zip=1#\xE9 %41+\nsecond line|0|0|0|0|0|0|0|0|-1|-1|-1");
  ReportRig::zip().Text = "9|0";
  ReportRig::age().Text = "4|2";
  EXPECT_EQ(SummaryRecord(ReportRig::form(), 1), VersionDigits() + "|" + ReportRig::key + "|4|2|1|0|0|9|0");
}

}  // namespace
}  // namespace borvane
