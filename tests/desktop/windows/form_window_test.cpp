#include <QAccessible>
#include <QCloseEvent>
#include <QLineEdit>
#include <QWindow>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "support/desktop/form_on_screen.h"

namespace borvane {
namespace {

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

}  // namespace
}  // namespace borvane
