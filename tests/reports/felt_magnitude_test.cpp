#include "reports/felt_magnitude.h"

#include <gtest/gtest.h>

#include "basic/number.h"
#include "basic/text.h"
#include "support/failure_of.h"
#include "support/program/report_rig.h"

namespace borvane {
namespace {

TEST(ScoreOfBox, IsTheBoxsWeightWhileTheFirstIsTicked) {
  const float weights[] = {5, 6, 5, 4, 5, 0, 0};
  for (int box = 0; box < 7; ++box)
    EXPECT_EQ(ScoreOfBox(box, true), weights[box]) << box;
}

TEST(ScoreOfBox, IsNegativeForEveryBoxWhileTheFirstIsClear) {
  RecordProperty("quirk", "first-box-gives-the-sign");
  const float weights[] = {5, 6, 5, 4, 5, 0, 0};
  for (int box = 0; box < 7; ++box)
    EXPECT_EQ(ScoreOfBox(box, false), -weights[box]) << box;
}

TEST(ScoreOfStrength, IsOneForTheWeakestAndFiveForTheStrongest) {
  for (int position = 0; position < 5; ++position)
    EXPECT_EQ(ScoreOfStrength(position), static_cast<float>(position + 1));
}

/// The magnitude as it is shown and as it is sent.
struct MagnitudeTexts {
  std::string shown;
  std::string sent;
};

MagnitudeTexts TextsOf(int floor, float score) {
  const float magnitude = FeltMagnitude(floor, score);
  return {SingleText(magnitude), std::string(Trim(InvariantText(magnitude)))};
}

TEST(FeltMagnitude, IsWorkedOutToTheLastDigit) {
  EXPECT_EQ(TextsOf(0, 1).shown, "1.571429");
  EXPECT_EQ(TextsOf(3, 3).shown, "2.285714");
  EXPECT_EQ(TextsOf(13, 16).shown, "5.571429");
  EXPECT_EQ(TextsOf(0, -6).shown, "0.5714286");
  EXPECT_EQ(TextsOf(0, -6).sent, ".5714286");
}

TEST(FeltMagnitude, IsRoundedToSinglePrecisionOnce) {
  // Divided in single precision, this would be .57142854.
  EXPECT_EQ(FeltMagnitude(0, -6), .5714286F);
  EXPECT_EQ(FeltMagnitude(0, -10), 0);
  EXPECT_EQ(TextsOf(0, -10).shown, "0");
  EXPECT_EQ(TextsOf(0, -10).sent, "0");
}

TEST(FeltMagnitude, HasNoLimits) {
  EXPECT_EQ(TextsOf(0, -31).shown, "-3");
  EXPECT_EQ(TextsOf(0, -31).sent, "-3");
  EXPECT_EQ(TextsOf(0, -12).sent, "-.2857143");
  EXPECT_EQ(TextsOf(13, 152).shown, "25");
}

TEST(FeltMagnitude, TakesOneFloorLessWhereNoneWasPicked) { EXPECT_EQ(FeltMagnitude(-1, 5), 2); }

TEST(FeltMagnitude, RaisesAnOverflowBeyondSixteenBits) {
  EXPECT_EQ(FailureOf([] { FeltMagnitude(32765, 0); }), 6);
  EXPECT_EQ(FailureOf([] { FeltMagnitude(32764, 0); }), 0);
}

// What the clicks on the form make of the score.

TEST(FeltScore, StartsAtZero) {
  ReportRig rig;
  EXPECT_EQ(rig.state().FeltScore, 0);
  rig.open();
  EXPECT_EQ(rig.state().FeltScore, 0);
}

TEST(FeltScore, GoesByTheFirstBoxAtTheMomentOfTheClick) {
  ReportRig rig;
  rig.open();
  rig.tick_off(ReportRig::form().Check2(1), 1);
  EXPECT_EQ(rig.state().FeltScore, -6);
  rig.tick_off(ReportRig::form().Check2(1), 0);
  EXPECT_EQ(rig.state().FeltScore, -12) << "clearing it lowers the score once more";
  rig.tick_off(ReportRig::form().Check2(0), 1);
  EXPECT_EQ(rig.state().FeltScore, -7) << "the first box is ticked already when its own click counts";
  rig.tick_off(ReportRig::form().Check2(3), 1);
  rig.tick_off(ReportRig::form().Check2(3), 0);
  EXPECT_EQ(rig.state().FeltScore, 1);
  rig.tick_off(ReportRig::form().Check2(0), 0);
  EXPECT_EQ(rig.state().FeltScore, -4);
  rig.tick_off(ReportRig::form().Check2(0), 2);
  EXPECT_EQ(rig.state().FeltScore, -9) << "a third state is no tick";
}

TEST(FeltScore, IsLeftAloneByTheTwoLastBoxes) {
  ReportRig rig;
  rig.open();
  for (const int first : {0, 1}) {
    ReportRig::form().Check2(0).Value = first;
    const float score = rig.state().FeltScore;
    for (const int box : {5, 6}) {
      rig.tick_off(ReportRig::form().Check2(box), 1);
      rig.tick_off(ReportRig::form().Check2(box), 0);
    }
    EXPECT_EQ(rig.state().FeltScore, score);
  }
}

TEST(FeltScore, AddsEachChoiceOfTheStrength) {
  RecordProperty("quirk", "strengths-add-up");
  ReportRig rig;
  rig.open();
  rig.choose(ReportRig::form().Combo2, "weak");
  EXPECT_EQ(rig.state().FeltScore, 1);
  rig.choose(ReportRig::form().Combo2, "strong");
  EXPECT_EQ(rig.state().FeltScore, 5);
  rig.choose(ReportRig::form().Combo2, "strong");
  EXPECT_EQ(rig.state().FeltScore, 9) << "also the same one again";
  rig.choose(ReportRig::form().Combo2, "violent!");
  EXPECT_EQ(rig.state().FeltScore, 14);
}

TEST(FeltScore, IsLeftAloneByEverythingElse) {
  ReportRig rig;
  rig.open();
  rig.choose(ReportRig::form().Combo1, "Froze up");
  rig.choose(ReportRig::form().Combo3, "Higher!");
  rig.tick_off(ReportRig::form().Check1, 1);
  for (int i = 0; i < ReportRig::form().Text1.Count(); ++i)
    rig.answer(ReportRig::form().Text1(i), "7");
  rig.happen([] { ReportRig::form().Combo2.Text = "moderate"; });
  EXPECT_EQ(rig.state().FeltScore, 0);
}

TEST(FeltScore, SurvivesACancelledReport) {
  RecordProperty("quirk", "felt-score-outlives-the-window");
  ReportRig rig;
  rig.open();
  rig.choose(ReportRig::form().Combo2, "violent!");
  rig.cancel();
  EXPECT_EQ(ComPart.IfLoaded(), nullptr);
  rig.open();
  EXPECT_EQ(rig.state().FeltScore, 5);
  EXPECT_EQ(ReportRig::form().Combo2.Text(), "");
}

}  // namespace
}  // namespace borvane
