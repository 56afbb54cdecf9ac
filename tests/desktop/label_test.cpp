#include <QLabel>
#include <QPushButton>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "desktop/sample_form.h"
#include "desktop/screen_rig.h"

namespace borvane {
namespace {

TEST(Label, ShowsItsCaptionAndEachChangeOfIt) {
  ScreenRig rig;
  sample->Show();
  QWidget &label = rig.widget(*sample, "Label1");
  EXPECT_EQ(SpokenName(label), "Depth");

  sample->Label1.Caption = "Depth: \x96 7.1 km";

  EXPECT_EQ(SpokenName(label), "Depth: – 7.1 km");
}

TEST(Label, TakesNoMarkupFromAPage) {
  ScreenRig rig;
  sample->Show();
  sample->Label1.Caption = "<b>7</b> &amp; <img src=x>";

  EXPECT_EQ(rig.widget<QLabel>(*sample, "Label1").textFormat(), Qt::PlainText);
  EXPECT_EQ(SpokenName(rig.widget(*sample, "Label1")), "<b>7</b> &amp; <img src=x>");
}

TEST(Label, ShowsItsColour) {
  ScreenRig rig;
  sample->Show();
  QWidget &label = rig.widget(*sample, "Label1");
  EXPECT_EQ(PixelsOf(Picture(label), Qt::red, half), 0);

  sample->Label1.ForeColor = 0x0000FF;
  EXPECT_GT(PixelsOf(Picture(label), Qt::red, half), 5);

  sample->Label1.ForeColor = color_button_text;
  EXPECT_EQ(PixelsOf(Picture(label), Qt::red, half), 0);
}

TEST(Label, IsUnderlinedAndBoldWhileItIsToldSo) {
  ScreenRig rig;
  sample->Show();
  QWidget &label = rig.widget(*sample, "Label1");
  const QImage plain = Picture(label);

  sample->Label1.Underline = true;
  const QImage underlined = Picture(label);
  sample->Label1.Bold = true;
  const QImage bold = Picture(label);
  sample->Label1.Bold = false;
  sample->Label1.Underline = false;

  EXPECT_NE(underlined, plain);
  EXPECT_NE(bold, underlined);
  EXPECT_EQ(Picture(label), plain);
}

TEST(Label, ShowsAndHides) {
  ScreenRig rig;
  sample->Label1.Visible = false;
  sample->Show();
  QWidget &label = rig.widget(*sample, "Label1");
  EXPECT_FALSE(label.isVisible());

  sample->Label1.Visible = true;
  EXPECT_TRUE(label.isVisible());
}

TEST(Label, TakesUpTheTextOfItsHiddenTimeWhenItShows) {
  ScreenRig rig;
  sample->Label1.Width = 45;
  sample->Label1.Visible = false;
  sample->Show();
  auto &label = rig.widget<QLabel>(*sample, "Label1");
  for (const char *text : {"-", "+", "Users Online: 12"})
    sample->Label1.Caption = text;
  EXPECT_EQ(label.text(), "Depth") << "nobody sees it";

  sample->Label1.Visible = true;

  EXPECT_EQ(label.text(), "Users Online: 12");
  EXPECT_GE(label.width(), label.sizeHint().width());
}

TEST(Label, IsPaleWhileItIsDisabled) {
  ScreenRig rig;
  sample->Show();
  QWidget &label = rig.widget(*sample, "Label1");
  const int dark = PixelsOf(Picture(label), label.palette().color(QPalette::WindowText), half);
  sample->Label1.Enabled = false;

  EXPECT_GT(dark, 0);
  EXPECT_EQ(PixelsOf(Picture(label), label.palette().color(QPalette::Active, QPalette::WindowText), half), 0);
}

TEST(Label, MovesWithItsTwips) {
  ScreenRig rig;
  sample->Show();
  sample->Label1.Left = 1500;
  sample->Label1.Top = 300;
  sample->Label1.Width = 1800;

  EXPECT_EQ(rig.widget(*sample, "Label1").geometry(), QRect(100, 20, 120, 13));
}

TEST(Label, GrowsWithATextThatIsWiderThanItself) {
  ScreenRig rig;
  sample->Label1.Width = 45;
  sample->Show();
  sample->Label1.Caption = "Users Online: 12";

  EXPECT_GE(rig.widget(*sample, "Label1").width(), rig.widget<QLabel>(*sample, "Label1").sizeHint().width());
}

TEST(Label, ShowsTheBeginningOfATextThatNoScreenCouldShow) {
  ScreenRig rig;
  sample->Show();
  for (const char *piece : {"7", "a b ", "7\r\n"}) {
    std::string text;
    while (text.size() < 10'000'000)
      text += piece;
    sample->Label1.Caption = text;

    EXPECT_EQ(sample->Label1.Caption(), text);
    EXPECT_EQ(SpokenName(rig.widget(*sample, "Label1")), text.substr(0, 1'000));
  }
}

TEST(Label, RaisesMouseMoveWithThePointerInTwips) {
  ScreenRig rig;
  sample->Label1.MouseMove = [&](const MouseState &mouse) {
    rig.note(std::to_string(static_cast<int>(mouse.x)) + " " + std::to_string(static_cast<int>(mouse.y)));
  };
  sample->FormMouseMove = [&](const MouseState &) { rig.note("form"); };
  sample->Show();
  Settle();
  rig.events();

  QTest::mouseMove(&rig.widget(*sample, "Label1"), QPoint(20, 5));
  Settle();

  EXPECT_EQ(rig.events(), Lines({"300 75"}));
}

TEST(Label, WithoutAMouseMoveOfItsOwnKeepsThePointerFromTheForm) {
  ScreenRig rig;
  sample->FormMouseMove = [&](const MouseState &) { rig.note("form"); };
  sample->Show();
  Settle();
  rig.events();

  QTest::mouseMove(&rig.widget(*sample, "Label1"), QPoint(20, 5));
  Settle();

  EXPECT_EQ(rig.events(), Lines());
}

class LinkLabel : public testing::Test {
 protected:
  LinkLabel() {
    sample->Link1.Click = [this] { rig.note("click"); };
    sample->Show();
    Settle();
    rig.events();
  }

  QWidget &link() const { return rig.widget(*sample, "Link1"); }

  ScreenRig rig;
};

TEST_F(LinkLabel, RaisesClick) {
  QTest::mouseClick(&link(), Qt::LeftButton);

  EXPECT_EQ(rig.events(), Lines({"click"}));
}

TEST_F(LinkLabel, IsReachedAndPressedWithTheKeyboard) {
  EXPECT_TRUE(link().focusPolicy() & Qt::TabFocus);
  link().setFocus(Qt::TabFocusReason);
  QTest::keyClick(&link(), Qt::Key_Space);

  EXPECT_EQ(rig.events(), Lines({"click"}));
}

TEST_F(LinkLabel, DoesNothingWhileItIsDisabled) {
  sample->Link1.Enabled = false;
  QTest::mouseClick(&link(), Qt::LeftButton);

  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(LinkLabel, ShowsItsCaption) {
  sample->Link1.Caption = "Version";

  EXPECT_EQ(SpokenName(link()), "Version");
  EXPECT_GT(PixelsOf(Picture(link()), link().palette().color(QPalette::WindowText), half), 5);
}

TEST_F(LinkLabel, TakesNoKeyFromTheTextOfAPage) {
  sample->Link1.Caption = "Q&A";

  EXPECT_EQ(SpokenName(link()), "Q&A");
  EXPECT_TRUE(rig.widget<QPushButton>(*sample, "Link1").shortcut().isEmpty());
  const int width = link().width();
  sample->Link1.Caption = "Q&&A";
  EXPECT_EQ(SpokenName(link()), "Q&&A");
  EXPECT_GE(link().width(), width);
}

TEST_F(LinkLabel, IsPaleWhileItIsDisabled) {
  sample->Link1.Enabled = false;

  EXPECT_EQ(PixelsOf(Picture(link()), link().palette().color(QPalette::Active, QPalette::WindowText), half), 0);
}

}  // namespace
}  // namespace borvane
