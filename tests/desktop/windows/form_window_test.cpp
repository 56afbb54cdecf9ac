#include <QAccessible>
#include <QCloseEvent>
#include <QLineEdit>
#include <QWindow>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

class FormOnScreen : public testing::Test {
 protected:
  FormOnScreen() {
    sample->KeyUp = [this](int key, int shift) {
      rig.note("key " + std::to_string(key) + (shift == 0 ? "" : " with " + std::to_string(shift)));
    };
    sample->Resize = [this] {
      rig.note("resize to " + std::to_string(static_cast<int>(sample->Width())) + " x " +
               std::to_string(static_cast<int>(sample->Height())));
    };
    sample->Show();
    Settle();
    rig.events();
  }

  FormWindow &window() const { return rig.window(*sample); }

  ScreenRig rig;
};

TEST(FormWindowTest, IsNotMadeBeforeItsFormIsShown) {
  ScreenRig rig;
  sample->Text1.Text = "loaded";
  EXPECT_EQ(rig.forms().WindowOf(*sample), nullptr);

  sample->Show();
  EXPECT_NE(rig.forms().WindowOf(*sample), nullptr);
}

TEST_F(FormOnScreen, HasItsClientAreaAtFifteenTwipsAPixel) {
  EXPECT_TRUE(window().isVisible());
  EXPECT_EQ(window().size(), QSize(600, 400));
}

TEST_F(FormOnScreen, ShowsItsCaption) {
  sample->Caption = "5.2 - Borvane [*] \x96 Last Events";

  EXPECT_EQ(window().windowHandle()->title(), QString::fromUtf8("5.2 - Borvane [*] – Last Events"));
}

TEST_F(FormOnScreen, IsAWindowToAScreenReader) {
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&window())->role(), QAccessible::Window);
  sample->Caption = "Depth";
  EXPECT_EQ(SpokenName(window()), "Depth");
}

TEST_F(FormOnScreen, ResizingByTheUserGivesTheFormItsOuterSizeInOneResize) {
  window().resize(500, 300);
  Settle();

  EXPECT_EQ(rig.events(), Lines({"resize to 7620 x 4905"}));
}

TEST_F(FormOnScreen, ResizingByTheUserIsNotUndoneAndKeepsTheWindowMaximized) {
  class Sizes : public QObject {
   public:
    QList<QSize> seen;

   protected:
    bool eventFilter(QObject * /*object*/, QEvent *event) override {
      if (event->type() == QEvent::Resize)
        seen.append(static_cast<QResizeEvent *>(event)->size());
      return false;
    }
  } sizes;
  window().installEventFilter(&sizes);
  window().showMaximized();
  Settle();
  const QSize full = window().size();
  EXPECT_EQ(sizes.seen, QList<QSize>({full}));
  EXPECT_TRUE(window().isMaximized());

  window().showNormal();
  Settle();
  EXPECT_EQ(sizes.seen, QList<QSize>({full, QSize(600, 400)}));
  EXPECT_FALSE(window().isMaximized());
}

TEST_F(FormOnScreen, IsNotReadByAWindowThatOutlivesIt) {
  FormWindow &left = window();
  sample.Unload();
  left.resize(700, 500);
  QResizeEvent resized(QSize(700, 500), QSize(600, 400));
  QApplication::sendEvent(&left, &resized);

  EXPECT_EQ(sample.IfLoaded(), nullptr);
  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(FormOnScreen, ResizingByCodeResizesTheWindowAndIsReportedOnce) {
  sample->Width = 7000;
  Settle();

  EXPECT_EQ(window().width(), 459);
  EXPECT_EQ(sample->Width(), 7000);
  EXPECT_EQ(rig.events(), Lines({"resize to 7000 x 6405"}));
}

TEST_F(FormOnScreen, CanBeMadeAsSmallAsTheUserLikes) {
  window().resize(20, 10);
  Settle();

  EXPECT_EQ(window().size(), QSize(20, 10));
}

TEST_F(FormOnScreen, FixedWindowCannotBeResized) {
  other_form->Show();
  Settle();

  EXPECT_EQ(rig.window(*other_form).minimumSize(), QSize(200, 100));
  EXPECT_EQ(rig.window(*other_form).maximumSize(), QSize(200, 100));
}

TEST_F(FormOnScreen, MovesWhereTheFormGoes) {
  sample->Left = 1500;
  sample->Top = 450;
  Settle();

  EXPECT_EQ(window().pos(), QPoint(100, 30));
}

TEST_F(FormOnScreen, LearnsWhereTheUserHasMovedIt) {
  window().move(200, 50);
  Settle();
  EXPECT_EQ(sample->Left(), 3000);
  EXPECT_EQ(sample->Top(), 750);

  sample->Left = 3150;
  Settle();
  EXPECT_EQ(window().pos(), QPoint(210, 50));
}

TEST_F(FormOnScreen, KeepsItsTwipsWhereItHasMovedByItself) {
  sample->Left = 1504;
  sample->Top = 446;
  Settle();

  EXPECT_EQ(window().pos(), QPoint(100, 30));
  EXPECT_EQ(sample->Left(), 1504);
  EXPECT_EQ(sample->Top(), 446);
}

TEST_F(FormOnScreen, IsNotSetBackWhenTheScreenConfirmsAMoveLate) {
  sample->Left = 1500;
  sample->Left = 3000;
  window().windowHandle()->setFramePosition(QPoint(100, window().y()));
  Settle();

  EXPECT_EQ(sample->Left(), 3000);
}

TEST_F(FormOnScreen, IsNotSetBackWhenTheScreenConfirmsManyMovesLate) {
  constexpr int steps = 600;
  const auto place = [](int step) { return 10 + step % 7; };
  for (int step = 0; step <= steps; ++step)
    sample->Left = static_cast<float>(place(step)) * 15;
  for (int step = 0; step < steps; ++step) {
    window().windowHandle()->setFramePosition(QPoint(place(step), window().y()));
    Settle();
    ASSERT_EQ(sample->Left(), static_cast<float>(place(steps)) * 15) << step;
  }
}

TEST_F(FormOnScreen, FollowsTheUserToAPlaceThatItAskedForLongAgo) {
  sample->Left = 1500;
  sample->Left = 3000;
  window().windowHandle()->setFramePosition(QPoint(150, window().y()));
  Settle();
  window().windowHandle()->setFramePosition(QPoint(100, window().y()));
  Settle();

  EXPECT_EQ(sample->Left(), 1500);
}

TEST(FormWindowTest, IsFromItsFirstShowOnWhereTheFormWasPut) {
  const ScreenRig rig;
  sample->Left = 0;
  sample->Top = -600;
  other_form->Left = 1500;
  sample->Show();
  other_form->Show();
  Settle();

  EXPECT_EQ(rig.window(*sample).pos(), QPoint(0, -40));
  EXPECT_EQ(rig.window(*other_form).x(), 100);

  sample->Hide();
  rig.window(*sample).move(70, 80);
  sample->Show();
  Settle();
  EXPECT_EQ(rig.window(*sample).pos(), QPoint(70, 80));
}

TEST(FormWindowTest, IsNotPlacedByItsFormBeforeThatIsPut) {
  const ScreenRig rig;
  sample->Show();
  Settle();
  EXPECT_FALSE(rig.window(*sample).testAttribute(Qt::WA_Moved));
}

TEST_F(FormOnScreen, CloseBoxUnloadsTheForm) {
  window().close();
  Settle();

  EXPECT_EQ(sample.IfLoaded(), nullptr);
}

TEST_F(FormOnScreen, CloseBoxOfAFormThatRefusesLeavesWhatTheFormDoes) {
  sample->QueryUnload = [&](Integer &cancel, UnloadMode mode) {
    rig.note(mode == UnloadMode::CloseBox ? "close box" : "code");
    cancel = 1;
    sample->Hide();
  };
  window().close();
  Settle();

  EXPECT_EQ(rig.events(), Lines({"close box"}));
  ASSERT_NE(sample.IfLoaded(), nullptr);
  EXPECT_FALSE(window().isVisible());

  sample->Show();
  EXPECT_TRUE(window().isVisible());
}

TEST_F(FormOnScreen, HandlerMayUnloadItsOwnWindow) {
  sample->Command1.Click = [] { sample.Unload(); };
  QTest::mouseClick(&rig.widget(*sample, "Command1"), Qt::LeftButton);
  Settle();

  EXPECT_EQ(sample.IfLoaded(), nullptr);
}

TEST_F(FormOnScreen, NewWindowComesAfterAnUnload) {
  sample.Unload();
  sample->Text1.Text = "new";
  sample->Show();
  Settle();

  EXPECT_EQ(SpokenValue(rig.widget(*sample, "Text1")), "new");
}

TEST_F(FormOnScreen, OwnedWindowStaysAboveItsOwner) {
  other_form->Show(&*sample);

  EXPECT_EQ(rig.window(*other_form).windowHandle()->transientParent(), window().windowHandle());
}

TEST_F(FormOnScreen, HourglassIsItsPointerWhileThePropertySaysSo) {
  sample->MousePointer = pointer_hourglass;
  EXPECT_EQ(window().cursor().shape(), Qt::WaitCursor);
  EXPECT_EQ(rig.widget(*sample, "ListView1").cursor().shape(), Qt::WaitCursor);

  sample->MousePointer = pointer_normal;
  EXPECT_EQ(window().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(FormOnScreen, SeesThePointerInTwipsOfItsClientArea) {
  sample->FormMouseMove = [&](const MouseState &mouse) {
    rig.note(std::to_string(static_cast<int>(mouse.x)) + " " + std::to_string(static_cast<int>(mouse.y)));
  };
  QTest::mouseMove(&window(), QPoint(590, 100));
  Settle();

  EXPECT_EQ(rig.events(), Lines({"8850 1500"}));
}

TEST_F(FormOnScreen, DragOverAControlIsNoMoveOverTheForm) {
  sample->FormMouseMove = [&](const MouseState & /*mouse*/) { rig.note("move"); };
  QWidget &label = rig.widget(*sample, "Label1");
  QTest::mousePress(&label, Qt::LeftButton);
  QMouseEvent drag(QEvent::MouseMove, QPointF(5, 5), label.mapToGlobal(QPointF(5, 5)), Qt::NoButton, Qt::LeftButton,
                   {});
  QApplication::sendEvent(&label, &drag);

  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(FormOnScreen, StoppedDesktopTakesNoEvents) {
  sample->Command1.Click = [&] { rig.note("click"); };
  const auto work = [this](QSize size) {
    QTest::mouseClick(&rig.widget(*sample, "Command1"), Qt::LeftButton);
    QTest::keyClick(window().windowHandle(), Qt::Key_R);
    window().resize(size);
    Settle();
  };
  work({300, 300});
  EXPECT_EQ(rig.events(), Lines({"click", "key 82", "resize to 4620 x 4905"}));

  rig.forms().Stop();
  work({400, 400});
  window().close();
  Settle();

  EXPECT_EQ(rig.events(), Lines());
  EXPECT_NE(sample.IfLoaded(), nullptr);
}

class Keys : public FormOnScreen {
 protected:
  QWindow *screen_window() const { return window().windowHandle(); }

  void send(QEvent::Type type, Qt::Key key, bool repeats = false) const {
    QKeyEvent event(type, key, Qt::NoModifier, QString(), repeats);
    QApplication::sendEvent(screen_window(), &event);
  }
};

TEST_F(Keys, HaveTheirCodesWithOrWithoutShift) {
  QTest::keyClick(screen_window(), Qt::Key_R);
  QTest::keyClick(screen_window(), Qt::Key_R, Qt::ShiftModifier);
  QTest::keyClick(screen_window(), Qt::Key_F1);
  QTest::keyClick(screen_window(), Qt::Key_F10);
  QTest::keyClick(screen_window(), Qt::Key_Escape);
  QTest::keyClick(screen_window(), Qt::Key_7);
  QTest::keyClick(screen_window(), Qt::Key_Down, Qt::ControlModifier);
  send(QEvent::KeyPress, Qt::Key_Adiaeresis);
  send(QEvent::KeyRelease, Qt::Key_Adiaeresis);

  // The modifier keys are keys as well.
  EXPECT_EQ(rig.events(), Lines({"key 82", "key 82 with 1", "key 16", "key 112", "key 121", "key 27", "key 55",
                                 "key 40 with 2", "key 17", "key 0"}));
}

TEST_F(Keys, OfAnotherScriptHaveTheCodeOfTheLatinLetterAtTheirPlace) {
  constexpr quint32 place_of_r = 27;
  constexpr quint32 place_of_f = 41;
  constexpr quint32 place_of_comma = 59;
  const auto click = [this](char16_t letter, quint32 place) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent event(type, letter, Qt::NoModifier, place, 0, 0, QString(QChar(letter)));
      QApplication::sendEvent(screen_window(), &event);
    }
  };
  click(u'К', place_of_r);
  click(u'Φ', place_of_f);
  click(u'Б', place_of_comma);
  click(u'К', 0);
  click(u'Ä', place_of_r);

  EXPECT_EQ(rig.events(), Lines({"key 82", "key 70", "key 0", "key 0", "key 0"}));
}

TEST_F(Keys, ComeAtTheReleaseAndOnlyForAPressThatTheWindowSaw) {
  QTest::keyRelease(screen_window(), Qt::Key_Escape);
  EXPECT_EQ(rig.events(), Lines());

  QTest::keyPress(screen_window(), Qt::Key_Escape);
  EXPECT_EQ(rig.events(), Lines());
  QTest::keyRelease(screen_window(), Qt::Key_Escape);
  EXPECT_EQ(rig.events(), Lines({"key 27"}));
}

TEST_F(Keys, PressedBeforeAnotherWindowHadTheKeyboardDoNotCount) {
  QTest::keyPress(screen_window(), Qt::Key_R);
  other_form->Show();
  QApplication::setActiveWindow(&rig.window(*other_form));
  Settle();
  QApplication::setActiveWindow(&window());
  Settle();
  QTest::keyRelease(screen_window(), Qt::Key_R);

  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(Keys, HeldKeyCountsOnceAtItsEnd) {
  send(QEvent::KeyPress, Qt::Key_R);
  for (int i = 0; i < 5; ++i) {
    send(QEvent::KeyRelease, Qt::Key_R, true);
    send(QEvent::KeyPress, Qt::Key_R, true);
  }
  EXPECT_EQ(rig.events(), Lines());
  send(QEvent::KeyRelease, Qt::Key_R);

  EXPECT_EQ(rig.events(), Lines({"key 82"}));
}

TEST_F(Keys, TypedIntoABoxReachTheFormBeforeTheBoxHasThemReleased) {
  rig.widget(*sample, "Text1").setFocus();
  sample->Text1.Change = [&] { rig.note("change " + sample->Text1.Text()); };
  QTest::keyClick(screen_window(), Qt::Key_R, Qt::NoModifier);
  Settle();

  EXPECT_EQ(rig.events(), Lines({"change 10r", "key 82"}));
}

TEST_F(Keys, MayUnloadTheWindow) {
  sample->KeyUp = [](int, int) { sample.Unload(); };
  QTest::keyClick(screen_window(), Qt::Key_Q);
  Settle();

  EXPECT_EQ(sample.IfLoaded(), nullptr);
}

}  // namespace
}  // namespace borvane
