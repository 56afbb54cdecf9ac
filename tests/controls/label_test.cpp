#include "controls/label.h"

#include <gtest/gtest.h>

#include "support/box.h"
#include "support/recording_host.h"

namespace borvane {
namespace {

// The recording host measures 90 twips for a character and 100 for a bold one, and 195 for a line.

class SelfSizingLabel : public testing::Test {
 protected:
  const Windows windows;
  Box box;
  Label label{box, "Label1", {.Caption = "Mag: ", .Left = 300, .Width = 10, .Height = 10, .AutoSize = true}};
};

TEST_F(SelfSizingLabel, HasTheSizeOfItsTextFromTheStart) {
  EXPECT_EQ(label.Width(), 450);
  EXPECT_EQ(label.Height(), 195);
}

TEST_F(SelfSizingLabel, FollowsItsTextAtOnceAndKeepsItsLeftEdge) {
  label.Caption = "Mag: 5.2";
  EXPECT_EQ(label.Width(), 720);
  label.Caption = "";
  EXPECT_EQ(label.Width(), 0);
  EXPECT_EQ(label.Left(), 300);
}

TEST_F(SelfSizingLabel, FollowsItsWeight) {
  label.Bold = true;
  EXPECT_EQ(label.Width(), 500);
  label.Bold = false;
  EXPECT_EQ(label.Width(), 450);
}

TEST_F(SelfSizingLabel, FollowsItsFont) {
  label.FontSize = 18;
  EXPECT_EQ(label.Width(), 900);
  EXPECT_EQ(label.Height(), 390);
  label.FontName = "Wide";
  EXPECT_EQ(label.Width(), 1800);
}

TEST_F(SelfSizingLabel, IsNotMeasuredForItsColour) {
  label.Width = 77;
  label.ForeColor = 0;
  EXPECT_EQ(label.Width(), 77);
}

TEST(Label, KeepsItsSizeUnlessItSizesItself) {
  const Windows windows;
  Box box;
  Label label{box, "Label1", {.Caption = "Mag: ", .Width = 10, .Height = 20}};
  label.Caption = "Mag: 5.2";
  label.Bold = true;
  EXPECT_EQ(label.Width(), 10);
  EXPECT_EQ(label.Height(), 20);
}

TEST(Label, IsTransparentUnlessItsDesignFillsIt) {
  Box box;
  const Label label(box, "Label1", {});
  const Label filled(box, "Label2", {.BackColor = Rgb(0, 128, 0)});
  EXPECT_EQ(label.back_color(), std::nullopt);
  EXPECT_EQ(filled.back_color(), 0x008000U);
}

TEST(Label, HasTheFontThatItsPropertiesName) {
  Box box;
  Label label{box, "Label1", {.FontName = "Arial", .FontSize = 9, .Bold = true}};
  EXPECT_EQ(label.font().name, "Arial");
  EXPECT_EQ(label.font().size, 9);
  EXPECT_TRUE(label.font().bold);
  label.Bold = false;
  EXPECT_FALSE(label.font().bold);
}

}  // namespace
}  // namespace borvane
