#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QWindow>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

class FramelessWindow : public testing::Test {
 protected:
  FramelessWindow() {
    bar_form->Left = 600;
    bar_form->Top = 300;
    bar_form->Show();
    Settle();
  }

  FormWindow &window() const { return rig.window(*bar_form); }

  ScreenRig rig;
};

TEST_F(FramelessWindow, HasTheSameInnerAndOuterSize) {
  EXPECT_EQ(bar_form->Width(), 7500);
  EXPECT_EQ(bar_form->ScaleWidth(), 7500);
  EXPECT_EQ(bar_form->Height(), 435);
  EXPECT_EQ(bar_form->ScaleHeight(), 435);
  EXPECT_EQ(window().size(), QSize(500, 29));
  EXPECT_TRUE(window().windowHandle()->flags().testFlag(Qt::FramelessWindowHint));
}

TEST_F(FramelessWindow, KeepsItsPlaceWhenItIsHiddenAndShown) {
  bar_form->Hide();
  bar_form->Show();
  Settle();

  EXPECT_EQ(window().pos(), QPoint(40, 20));
}

TEST_F(FramelessWindow, MovesWhileItIsHidden) {
  bar_form->Hide();
  bar_form->Left = 0;
  bar_form->Show();
  Settle();

  EXPECT_EQ(window().pos(), QPoint(0, 20));
}

TEST_F(FramelessWindow, IsWhereItsTwipsSayAlsoOffTheScreen) {
  bar_form->Left = -1200.5F;
  bar_form->Top = -30;
  Settle();

  EXPECT_EQ(window().pos(), QPoint(-80, -2));
  EXPECT_EQ(bar_form->Left(), -1200.5F);
}

TEST_F(FramelessWindow, CanBeOnePixelHighAndShrinkAndGrow) {
  bar_form->Height = 15;
  Settle();
  EXPECT_EQ(window().size(), QSize(500, 1));

  bar_form->Width = 7450;
  bar_form->Height = 360;
  Settle();
  EXPECT_EQ(window().size(), QSize(497, 24));
  EXPECT_EQ(bar_form->Width(), 7450);
}

TEST_F(FramelessWindow, KeepsTheFormsNumbersWhereverTheScreenPutsIt) {
  window().move(70, 80);
  Settle();

  EXPECT_EQ(bar_form->Left(), 600);
  EXPECT_EQ(bar_form->Top(), 300);
}

TEST_F(FramelessWindow, IsBackInItsPlaceWhenItIsShownAgain) {
  window().move(70, 80);
  bar_form->Show();
  Settle();
  EXPECT_EQ(window().pos(), QPoint(40, 20)) << "open";

  bar_form->Hide();
  window().move(70, 80);
  bar_form->Show();
  Settle();
  EXPECT_EQ(window().pos(), QPoint(40, 20)) << "hidden";
}

TEST_F(FramelessWindow, GoesWithTheFirstScreen) {
  QScreen &screen = *QGuiApplication::primaryScreen();
  for (const bool is_hidden : {false, true}) {
    if (is_hidden)
      bar_form->Hide();
    window().move(70, 80);
    Q_EMIT screen.geometryChanged(screen.geometry());
    EXPECT_EQ(window().pos(), QPoint(40, 20)) << "moved, " << is_hidden;

    window().move(70, 80);
    Q_EMIT qApp->primaryScreenChanged(&screen);
    EXPECT_EQ(window().pos(), QPoint(40, 20)) << "another one, " << is_hidden;
    EXPECT_EQ(window().isVisible(), !is_hidden);
  }
  EXPECT_EQ(bar_form->Left(), 600);
}

TEST_F(FramelessWindow, SurvivesTheLossOfTheLastScreen) {
  window().move(70, 80);
  Q_EMIT qApp->primaryScreenChanged(nullptr);

  EXPECT_EQ(bar_form->Left(), 600);
}

TEST_F(FramelessWindow, GoesWithNoScreenWhenItsFormHasGone) {
  FormWindow &left = window();
  bar_form.Unload();
  left.move(70, 80);
  QScreen &screen = *QGuiApplication::primaryScreen();
  Q_EMIT screen.geometryChanged(screen.geometry());

  EXPECT_EQ(left.pos(), QPoint(70, 80));
}

TEST(FormWindowWithAFrame, StaysWhereTheUserHasPutItWhenTheFirstScreenChanges) {
  const ScreenRig rig;
  sample->Left = 600;
  sample->Show();
  Settle();
  rig.window(*sample).move(70, 80);
  Settle();
  Q_EMIT qApp->primaryScreenChanged(QGuiApplication::primaryScreen());
  sample->Show();

  EXPECT_EQ(rig.window(*sample).pos(), QPoint(70, 80));
}

TEST_F(FramelessWindow, IsNotSetBackWhenTheScreenConfirmsASizeLate) {
  bar_form->Width = 7450;
  bar_form->Width = 7400;
  window().windowHandle()->resize(497, 29);
  Settle();

  EXPECT_EQ(bar_form->Width(), 7400);
  EXPECT_EQ(bar_form->Height(), 435);
}

TEST_F(FramelessWindow, KeepsTheFormsNumbersWhateverSizeTheScreenGivesIt) {
  window().windowHandle()->resize(300, 20);
  Settle();

  EXPECT_EQ(bar_form->Width(), 7500);
  EXPECT_EQ(bar_form->Height(), 435);
}

TEST_F(FramelessWindow, TakesKeyReleases) {
  bar_form->KeyUp = [this](int key, int) { rig.note("key " + std::to_string(key)); };
  rig.events();
  QTest::keyClick(window().windowHandle(), Qt::Key_S);
  QTest::keyClick(window().windowHandle(), Qt::Key_Left);

  EXPECT_EQ(rig.events(), Lines({"key 83", "key 37"}));
}

TEST_F(FramelessWindow, IsNotReadByAWindowThatOutlivesIt) {
  FormWindow &left = window();
  bar_form.Unload();
  QKeyEvent press(QEvent::KeyPress, Qt::Key_Left, Qt::NoModifier);

  EXPECT_FALSE(static_cast<QObject &>(left).eventFilter(left.windowHandle(), &press)) << "a bar alone keeps the key";
}

}  // namespace
}  // namespace borvane
