#include <QMouseEvent>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "desktop/appearance.h"
#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

class BarOnScreen : public testing::Test {
 protected:
  BarOnScreen() {
    bar_form->Picture1.MouseMove = [this](const MouseState &mouse) { Note("box", mouse); };
    bar_form->Picture1.Click = [this] { rig.note("click"); };
    bar_form->Label1(1).MouseMove = [this](const MouseState &mouse) { Note("label", mouse); };
    bar_form->Label1(1).MouseUp = [this](const MouseState &mouse) { Note("release", mouse); };
    bar_form->Show();
    Settle();
    rig.events();
  }

  void Note(const std::string &what, const MouseState &mouse) {
    rig.note(what + " " + std::to_string(static_cast<int>(mouse.x)) + " " + std::to_string(static_cast<int>(mouse.y)));
  }

  QWidget &box() const { return rig.widget(*bar_form, "Picture1"); }
  QWidget &label(int i) const { return rig.widget(*bar_form, ("Label1(" + std::to_string(i) + ")").c_str()); }

  ScreenRig rig;
};

TEST_F(BarOnScreen, HoldsItsLabelsAtTheirTwips) {
  EXPECT_EQ(box().geometry(), QRect(5, 3, 481, 23));
  EXPECT_EQ(label(1).parentWidget(), &box());
  EXPECT_EQ(label(1).pos(), QPoint(100, 2));
}

TEST_F(BarOnScreen, HasReadableTextOnEachBackground) {
  bar_form->Label1(0).ForeColor = color_button_text;
  for (const Color color : {Color{0x000000}, Color{0xF55A00}}) {
    bar_form->Picture1.BackColor = color;
    const QColor background = Picture(box()).pixelColor(0, 0);
    EXPECT_EQ(background, QColor(static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
                                 static_cast<int>(color >> 16)));
    for (int i : {0, 1})
      EXPECT_GE(Contrast(label(i).palette().color(QPalette::WindowText), background), 4.5) << i;
  }
}

TEST_F(BarOnScreen, ChangesAColourOfTheSystemWithTheDesktop) {
  bar_form->Picture1.BackColor = 0x80000002;
  PreferDark(true);
  const QColor dark = Picture(box()).pixelColor(0, 0);
  PreferDark(false);

  EXPECT_EQ(dark, DarkPalette().color(QPalette::Highlight));
  EXPECT_NE(Picture(box()).pixelColor(0, 0), dark);
}

TEST_F(BarOnScreen, RaisesMouseMoveAndClickWhereNoLabelIs) {
  QTest::mouseMove(&box(), QPoint(300, 10));
  Settle();
  QTest::mouseClick(&box(), Qt::LeftButton, {}, QPoint(300, 10));
  QTest::mouseClick(&box(), Qt::RightButton, {}, QPoint(300, 10));

  EXPECT_EQ(rig.events(), Lines({"box 4500 150", "click"}));
}

TEST_F(BarOnScreen, RaisesNoClickForAReleaseOutsideIt) {
  QTest::mousePress(&box(), Qt::LeftButton, {}, QPoint(300, 10));
  QTest::mouseRelease(&box(), Qt::LeftButton, {}, QPoint(300, 60));

  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(BarOnScreen, HasTheEventsOfALabelWithThePointersPlaceInTheBox) {
  QTest::mouseMove(&label(1), QPoint(10, 4));
  Settle();
  QTest::mouseClick(&label(1), Qt::LeftButton, {}, QPoint(10, 4));

  EXPECT_EQ(rig.events(), Lines({"label 1650 90", "release 1650 90"}));
}

TEST_F(BarOnScreen, LearnsNothingOfThePointerOverALabelWithoutAHandler) {
  QTest::mouseMove(&label(0), QPoint(10, 4));
  Settle();
  QMouseEvent drag(QEvent::MouseMove, QPointF(5, 5), label(0).mapToGlobal(QPointF(5, 5)), Qt::NoButton, Qt::LeftButton,
                   {});
  QApplication::sendEvent(&label(0), &drag);
  QTest::mouseClick(&label(0), Qt::LeftButton, {}, QPoint(10, 4));

  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(BarOnScreen, HandlerOfTheBoxMayUnloadItsWindow) {
  bar_form->Picture1.Click = [] { bar_form.Unload(); };
  QTest::mouseClick(&box(), Qt::LeftButton, {}, QPoint(300, 10));
  Settle();

  EXPECT_EQ(bar_form.IfLoaded(), nullptr);
}

TEST(SelfSizingLabel, IsExactlyAsLargeOnTheScreenAsItSays) {
  const ScreenRig rig;
  bar_form->Label1(0).Caption = "Mag: 5.2";
  const float hidden_width = bar_form->Label1(0).Width();
  bar_form->Show();
  EXPECT_GT(hidden_width, 300);
  for (const bool bold : {false, true}) {
    bar_form->Label1(0).Bold = bold;
    for (const char *text : {"Mag: 5.2", "", "location: 12 km NNE of Ridgecrest & Inyokern", "at: 11:22:33, 2018"}) {
      bar_form->Label1(0).Caption = text;
      const QWidget &widget = rig.widget(*bar_form, "Label1(0)");
      EXPECT_EQ(static_cast<float>(widget.width()) * 15, bar_form->Label1(0).Width()) << text;
      EXPECT_EQ(widget.fontMetrics().size(Qt::TextSingleLine, QString::fromLatin1(text)), widget.size()) << text;
    }
  }
}

TEST(SelfSizingLabel, IsWiderInBoldAlsoWhileItsWindowIsNotShown) {
  ScreenRig rig;
  bar_form->Label1(1).Caption = "location: Ridgecrest";
  const float plain = bar_form->Label1(1).Width();
  bar_form->Label1(1).Bold = true;

  EXPECT_EQ(rig.forms().WindowOf(*bar_form), nullptr);
  EXPECT_GT(bar_form->Label1(1).Width(), plain);
}

}  // namespace
}  // namespace borvane
