#include "desktop/services/message_box.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QWindow>
#include <QtTest/QTest>
#include <functional>

#include <gtest/gtest.h>

#include "support/desktop/next_message_box.h"
#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

class MessageBoxOnScreen : public testing::Test {
 protected:
  MessageBoxOnScreen() {
    sample->KeyUp = [this](int key, int) { rig.note("key " + std::to_string(key)); };
    sample->Show();
    QApplication::setActiveWindow(&rig.window(*sample));
    Settle();
    rig.events();
  }

  /// Asks, lets `user` do something with the box on the screen, and gives the answer.
  static MessageAnswer Ask(MessageButtons buttons, const std::function<void(QMessageBox &)> &user) {
    const NextMessageBox next(user);
    return QtMessageBox().Show("<b>Sure</b> ?", "Borvane - Quit", buttons, MessageIcon::Question);
  }

  static void Click(QMessageBox &box, QMessageBox::StandardButton button) {
    QTest::mouseClick(box.button(button), Qt::LeftButton);
  }

  static void PressEsc(QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Escape); }

  ScreenRig rig;
};

TEST_F(MessageBoxOnScreen, OutlivesTheWindowThatAsked) {
  const MessageAnswer answer = Ask(MessageButtons::YesNo, [](QMessageBox &box) {
    sample.Unload();
    // What is left of the window goes as soon as events run.
    QTimer::singleShot(0, [&box] {
      EXPECT_TRUE(box.isVisible());
      box.button(QMessageBox::Yes)->click();
    });
  });

  EXPECT_EQ(answer, MessageAnswer::Yes);
  EXPECT_EQ(sample.IfLoaded(), nullptr);
}

TEST_F(MessageBoxOnScreen, LiesOverTheWindowThatAsked) {
  rig.window(*sample).move(150, 350);
  Ask(MessageButtons::YesNo, [&](QMessageBox &box) {
    EXPECT_EQ(box.parent(), nullptr);
    EXPECT_EQ(box.windowHandle()->transientParent(), rig.window(*sample).windowHandle());
    EXPECT_TRUE(rig.window(*sample).frameGeometry().contains(box.frameGeometry()));
    EXPECT_EQ(box.windowModality(), Qt::ApplicationModal);
    PressEsc(box);
  });
}

TEST_F(MessageBoxOnScreen, EscRefusesAndItsReleaseIsNotTheWindows) {
  EXPECT_EQ(Ask(MessageButtons::YesNo, PressEsc), MessageAnswer::No);
  EXPECT_EQ(Ask(MessageButtons::OkCancel, PressEsc), MessageAnswer::Cancel);

  QTest::keyRelease(rig.window(*sample).windowHandle(), Qt::Key_Escape);
  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(MessageBoxOnScreen, EnterTakesTheFirstButton) {
  const auto press_enter = [](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Return); };
  EXPECT_EQ(Ask(MessageButtons::YesNo, press_enter), MessageAnswer::Yes);
  EXPECT_EQ(Ask(MessageButtons::OkCancel, press_enter), MessageAnswer::Ok);
}

TEST_F(MessageBoxOnScreen, ShowsTextTitleIconAndButtons) {
  Ask(MessageButtons::YesNo, [](QMessageBox &box) {
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.text(), "<b>Sure</b> ?");
    EXPECT_EQ(box.windowTitle(), "Borvane - Quit");
    EXPECT_EQ(box.icon(), QMessageBox::Question);
    EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
    PressEsc(box);
  });
}

TEST_F(MessageBoxOnScreen, GivesTheButtonThatWasPressed) {
  const auto answer_to = [](MessageButtons buttons, QMessageBox::StandardButton button) {
    return Ask(buttons, [button](QMessageBox &box) { Click(box, button); });
  };
  EXPECT_EQ(answer_to(MessageButtons::YesNo, QMessageBox::Yes), MessageAnswer::Yes);
  EXPECT_EQ(answer_to(MessageButtons::YesNo, QMessageBox::No), MessageAnswer::No);
  EXPECT_EQ(answer_to(MessageButtons::OkCancel, QMessageBox::Ok), MessageAnswer::Ok);
  EXPECT_EQ(answer_to(MessageButtons::OkCancel, QMessageBox::Cancel), MessageAnswer::Cancel);
}

TEST_F(MessageBoxOnScreen, RefusesWhenItIsClosed) {
  EXPECT_EQ(Ask(MessageButtons::YesNo, [](QMessageBox &box) { box.close(); }), MessageAnswer::No);
  EXPECT_EQ(Ask(MessageButtons::OkCancel, [](QMessageBox &box) { box.close(); }), MessageAnswer::Cancel);
}

TEST_F(MessageBoxOnScreen, HasOkAloneAndAnswersWithItHoweverItIsClosed) {
  const auto press_enter = [](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Return); };
  const auto close = [](QMessageBox &box) { box.close(); };
  const auto click = [](QMessageBox &box) {
    EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
    EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::Ok));
    Click(box, QMessageBox::Ok);
  };
  EXPECT_EQ(Ask(MessageButtons::Ok, click), MessageAnswer::Ok);
  EXPECT_EQ(Ask(MessageButtons::Ok, press_enter), MessageAnswer::Ok);
  EXPECT_EQ(Ask(MessageButtons::Ok, PressEsc), MessageAnswer::Ok);
  EXPECT_EQ(Ask(MessageButtons::Ok, close), MessageAnswer::Ok);

  QTest::keyRelease(rig.window(*sample).windowHandle(), Qt::Key_Escape);
  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(MessageBoxOnScreen, LetsEventsRunWhileItAsks) {
  int ticks = 0;
  sample->Timer1.Timer = [&] { ++ticks; };
  sample->Timer1.Interval = 5;
  Ask(MessageButtons::YesNo, [&](QMessageBox &box) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks > 3; }, 20'000));
    Click(box, QMessageBox::No);
  });
  sample->Timer1.Interval = 0;
}

}  // namespace
}  // namespace borvane
