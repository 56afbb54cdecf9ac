#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QWindow>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "support/desktop/form_on_screen.h"

namespace borvane {
namespace {

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

TEST_F(Keys, PressedWithShiftCountWithItWhicheverIsReleasedFirst) {
  QTest::keyPress(screen_window(), Qt::Key_Shift);
  QTest::keyPress(screen_window(), Qt::Key_F10, Qt::ShiftModifier);
  QTest::keyRelease(screen_window(), Qt::Key_Shift, Qt::ShiftModifier);
  QTest::keyRelease(screen_window(), Qt::Key_F10);
  QTest::keyClick(screen_window(), Qt::Key_F10);

  EXPECT_EQ(rig.events(), Lines({"key 16", "key 121 with 1", "key 121"}));
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
