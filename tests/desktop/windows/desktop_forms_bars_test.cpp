// The two bars on a screen, worked by a pointer and by keys: their places and what moves them.
#include <QScreen>

#include "bars/bar_content.h"
#include "records/frmRecords.h"
#include "support/desktop/bar_on_screen.h"
#include "support/desktop/timeout.h"

namespace borvane {
namespace {

TEST_F(ShortBarOnScreen, HasItsPlaceItsSizeAndNoFrame) {
  const FormWindow &window = rig.window(*Form1);
  EXPECT_EQ(window.pos(), QPoint(3, 20));
  EXPECT_EQ(window.size(), QSize(529, 29));
  EXPECT_TRUE(window.windowFlags().testFlag(Qt::FramelessWindowHint));
  EXPECT_EQ(SpokenName(rig.window(*Form1)), "Borvane Short Bar");
}

TEST_F(ShortBarOnScreen, CollapsesAndOpensUnderThePointer) {
  Form1->IdleTicks = 99;
  Form1->Timer1_Timer();
  Settle();
  EXPECT_FALSE(widget(*Form1, "Check1").isVisible());
  EXPECT_EQ(rig.window(*Form1).width(), 491);

  Hover(widget(*Form1, "Picture1"), {200, 20});
  EXPECT_FALSE(widget(*Form1, "Check1").isVisible()) << "over the lower part";
  Hover(widget(*Form1, "Picture1"), {200, 2});
  EXPECT_TRUE(widget(*Form1, "Check1").isVisible());
  EXPECT_TRUE(widget(*Form1, "Check2").isVisible());
  EXPECT_EQ(rig.window(*Form1).width(), 529);
}

TEST_F(ShortBarOnScreen, OpensAboveFifteenPixelsOfItsBox) {
  Form1->IdleTicks = 99;
  Form1->Timer1_Timer();
  const int beside_the_texts = 470;
  Hover(widget(*Form1, "Picture1"), {beside_the_texts, 15});
  EXPECT_FALSE(widget(*Form1, "Check1").isVisible());
  Hover(widget(*Form1, "Picture1"), {beside_the_texts, 14});
  EXPECT_TRUE(widget(*Form1, "Check1").isVisible());
}

TEST_F(ShortBarOnScreen, StaysClosedUnderAPointerOnItsTexts) {
  UpdateShortBar();
  Form1->IdleTicks = 99;
  Form1->Timer1_Timer();
  for (const char *name : {"Label1(0)", "Label1(1)", "Label1(2)"}) {
    Hover(widget(*Form1, name), {3, 3});
    EXPECT_FALSE(widget(*Form1, "Check1").isVisible()) << name;
  }
  Hover(widget(*Form1, "Picture1"), {widget(*Form1, "Label1(0)").x() + 3, 4});
  EXPECT_TRUE(widget(*Form1, "Check1").isVisible()) << "above the text";
}

TEST_F(ShortBarOnScreen, MovesAndChangesItsWidthByKeys) {
  const FormWindow &window = rig.window(*Form1);
  const QPoint start = window.pos();
  for (int i = 0; i < 3; ++i) {
    Press(*Form1, Qt::Key_Down);
    Press(*Form1, Qt::Key_Right);
  }
  EXPECT_EQ(window.pos() - start, QPoint(10, 10));
  Press(*Form1, Qt::Key_Up);
  Press(*Form1, Qt::Key_Left);
  EXPECT_EQ(window.pos() - start, QPoint(7, 7));

  for (int i = 0; i < 3; ++i)
    Press(*Form1, Qt::Key_S);
  EXPECT_EQ(window.width(), 519);
  for (int i = 0; i < 3; ++i)
    Press(*Form1, Qt::Key_E);
  EXPECT_EQ(window.width(), 529);

  const int screen = QApplication::primaryScreen()->size().width();
  Press(*Form1, Qt::Key_R);
  EXPECT_EQ(window.x(), screen - 529);
  Press(*Form1, Qt::Key_C);
  EXPECT_EQ(window.x(), (screen - 529 + 1) / 2);
  Press(*Form1, Qt::Key_L);
  EXPECT_EQ(window.x(), 0);
}

TEST_F(ShortBarOnScreen, ArrowKeysLeaveTheKeyboardWhereItIs) {
  QWidget &box = widget(*Form1, "Check1");
  box.setFocus();
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Up, Qt::Key_Left}) {
    Press(*Form1, key);
    EXPECT_EQ(QApplication::focusWidget(), &box);
  }
}

TEST_F(ShortBarOnScreen, CountsAHeldKeyOnce) {
  const auto send = [this](QEvent::Type type, bool repeats) {
    QKeyEvent event(type, Qt::Key_S, Qt::NoModifier, QString(), repeats);
    QApplication::sendEvent(rig.window(*Form1).windowHandle(), &event);
  };
  constexpr int repeats_of_a_minute = 60 * 25;
  send(QEvent::KeyPress, false);
  for (int i = 0; i < repeats_of_a_minute; ++i) {
    send(QEvent::KeyRelease, true);
    send(QEvent::KeyPress, true);
  }
  EXPECT_EQ(Form1->Width(), 7935);
  send(QEvent::KeyRelease, false);
  EXPECT_EQ(Form1->Width(), 7885);
}

TEST_F(ShortBarOnScreen, KeepsAWidthThatTheScreenRounds) {
  for (int i = 0; i < 2; ++i)
    QTest::keyClick(rig.window(*Form1).windowHandle(), Qt::Key_S);
  // The screen confirms the first one when the second has been asked for.
  rig.window(*Form1).windowHandle()->resize(526, 29);
  Settle();
  EXPECT_EQ(Form1->Width(), 7835);
  EXPECT_EQ(Form1->Picture1.Width(), 7115);
}

TEST_F(ShortBarOnScreen, OpensTheProductsPageByAKey) {
  rig.events();
  Press(*Form1, Qt::Key_W);
  EXPECT_EQ(rig.events().back(), "open http://maker.localhost:17650/borvane/ for Form1");
}

TEST_F(ShortBarOnScreen, SwitchesTheRefreshByItsBox) {
  EXPECT_FALSE(widget(*Form1, "Label5").isEnabled());
  QTest::mouseClick(&widget(*Form1, "Check2"), Qt::LeftButton, {}, Middle(widget(*Form1, "Check2")));
  EXPECT_TRUE(widget(*Form1, "Label5").isEnabled());
  EXPECT_TRUE(frmRecords->Timer1.Enabled());
}

TEST_F(LongBarOnScreen, LiesAcrossTheTopInOneLine) {
  const FormWindow &window = rig.window(*newTagFrm);
  EXPECT_EQ(window.pos(), QPoint(0, 0));
  EXPECT_EQ(window.size(), QSize(QApplication::primaryScreen()->size().width(), 24));
  for (const char *name : {"Label1(0)", "Label1(2)", "Label2(0)", "Label2(2)"})
    EXPECT_LE(widget(*newTagFrm, name).geometry().bottom(), 24) << name;
}

TEST_F(LongBarOnScreen, MovesAndChangesItsWidthByKeys) {
  const FormWindow &window = rig.window(*newTagFrm);
  const int screen = QApplication::primaryScreen()->size().width();
  for (int i = 0; i < 3; ++i) {
    Press(*newTagFrm, Qt::Key_Down);
    Press(*newTagFrm, Qt::Key_Right);
  }
  EXPECT_EQ(window.pos(), QPoint(10, 10));
  Press(*newTagFrm, Qt::Key_Up);
  Press(*newTagFrm, Qt::Key_Left);
  EXPECT_EQ(window.pos(), QPoint(7, 7));

  const int handle = widget(*newTagFrm, "Check1").x();
  for (int i = 0; i < 3; ++i)
    Press(*newTagFrm, Qt::Key_S);
  EXPECT_EQ(window.width(), screen - 10);
  EXPECT_EQ(widget(*newTagFrm, "Check1").x(), handle - 10);
  Press(*newTagFrm, Qt::Key_R);
  EXPECT_EQ(window.x(), 10);
  Press(*newTagFrm, Qt::Key_C);
  EXPECT_EQ(window.x(), 5);
  Press(*newTagFrm, Qt::Key_L);
  EXPECT_EQ(window.x(), 0);
  for (int i = 0; i < 6; ++i)
    Press(*newTagFrm, Qt::Key_E);
  EXPECT_EQ(window.width(), screen + 10);
}

TEST_F(LongBarOnScreen, HidesAndOpensTheProductsPageByKeys) {
  rig.events();
  Press(*newTagFrm, Qt::Key_W);
  EXPECT_EQ(rig.events().back(), "open http://maker.localhost:17650/borvane/ for newTagFrm");
  Press(*newTagFrm, Qt::Key_H);
  EXPECT_FALSE(rig.window(*newTagFrm).isVisible());
}

TEST_F(LongBarOnScreen, MovesOutOfThePointersWayAndComesBack) {
  HoverEnd();
  EXPECT_EQ(rig.window(*newTagFrm).x(), -60);
  EXPECT_TRUE(QTest::qWaitFor([this] { return rig.window(*newTagFrm).x() == 0; }, timeout));
  EXPECT_FALSE(newTagFrm->Timer1.Enabled());
}

TEST_F(LongBarOnScreen, HidesFromThePointerAndComesBackWithoutAskingForTheKeyboard) {
  conffrm->Option1(1).Value = true;
  HoverEnd();
  EXPECT_FALSE(rig.window(*newTagFrm).isVisible());
  EXPECT_TRUE(QTest::qWaitFor([this] { return rig.window(*newTagFrm).isVisible(); }, timeout));
  EXPECT_TRUE(rig.window(*newTagFrm).windowHandle()->property("_q_showWithoutActivating").toBool());
  EXPECT_EQ(rig.window(*newTagFrm).x(), 0);
}

TEST_F(LongBarOnScreen, StaysWhereItIsWithIgnore) {
  conffrm->Option1(2).Value = true;
  HoverEnd();
  EXPECT_EQ(rig.window(*newTagFrm).x(), 0);
  EXPECT_TRUE(newTagFrm->Timer1.Enabled());
}

TEST_F(LongBarOnScreen, IsAsFarAwayAsAScreenAllows) {
  conffrm->Text7.Text = "1e9";
  HoverEnd();
  EXPECT_EQ(newTagFrm->Left(), -1e9F);
  EXPECT_EQ(rig.window(*newTagFrm).x(), -30'000);
}

}  // namespace
}  // namespace borvane
