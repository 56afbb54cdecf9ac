#include <QAbstractItemView>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

class ComboBoxOnScreen : public testing::Test {
 protected:
  ComboBoxOnScreen() {
    sample->Combo1.Click = [this] {
      rig.note("picked " + sample->Combo1.Text());
      if (sample->Combo1.Text().starts_with('*'))
        sample->Combo1.Text = "";
    };
    sample->Combo1.LostFocus = [this] { rig.note("left with " + sample->Combo1.Text()); };
    sample->Combo2.Click = [this] { rig.note("chose " + std::to_string(sample->Combo2.ListIndex())); };
    sample->Show();
    Settle();
    rig.events();
  }

  QComboBox &editable() const { return rig.widget<QComboBox>(*sample, "Combo1"); }
  QComboBox &fixed() const { return rig.widget<QComboBox>(*sample, "Combo2"); }

  /// Opens the list and clicks the entry.
  static void Pick(QComboBox &box, int position) {
    box.showPopup();
    Settle();
    QAbstractItemView &list = *box.view();
    const QRect entry = list.visualRect(list.model()->index(position, 0));
    QTest::mouseMove(list.viewport(), entry.center());
    // The list takes a press right after it opens for the one that opened it.
    QTest::qWait(QApplication::doubleClickInterval() + 20);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, entry.center());
    Settle();
  }

  ScreenRig rig;
};

TEST_F(ComboBoxOnScreen, ListsItsEntries) {
  ASSERT_EQ(editable().count(), 3);
  EXPECT_EQ(editable().itemText(0), "* STATES");
  EXPECT_EQ(editable().itemText(2), "Nevada");
}

TEST_F(ComboBoxOnScreen, PickingRaisesClickAlsoForTheSameEntryAgain) {
  Pick(editable(), 1);
  Pick(editable(), 1);
  Pick(editable(), 2);

  EXPECT_EQ(rig.events(), Lines({"picked Utah", "picked Utah", "picked Nevada"}));
  EXPECT_EQ(SpokenValue(editable()), "Nevada");
}

TEST_F(ComboBoxOnScreen, ShowsTheTextThatTheHandlerPutsInPlaceOfThePick) {
  Pick(editable(), 0);

  EXPECT_EQ(rig.events(), Lines({"picked * STATES"}));
  EXPECT_EQ(editable().currentText(), "");

  Pick(editable(), 0);
  EXPECT_EQ(rig.events(), Lines({"picked * STATES"}));
}

TEST_F(ComboBoxOnScreen, TypingChangesTheTextAndRaisesNothing) {
  QTest::keyClicks(editable().lineEdit(), "Ut");

  EXPECT_EQ(sample->Combo1.Text(), "Ut");
  EXPECT_EQ(editable().currentText(), "Ut");
  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(ComboBoxOnScreen, TakesWhatAssistiveSoftwareWritesForTyping) {
  editable().setFocus();
  Settle();
  Write(*editable().lineEdit(), "Utah");
  Settle();

  EXPECT_EQ(sample->Combo1.Text(), "Utah");
  EXPECT_EQ(sample->Combo1.ListIndex(), -1);
  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(ComboBoxOnScreen, IsLeftByAssistiveSoftwareThatWritesFromElsewhere) {
  rig.widget(*sample, "Check1").setFocus();
  Settle();
  rig.events();
  Write(*editable().lineEdit(), "Kansas");
  Settle();

  EXPECT_EQ(rig.events(), Lines({"left with Kansas"}));
}

TEST_F(ComboBoxOnScreen, KeepsItsTextFromAssistiveSoftwareWhileItIsDisabled) {
  sample->Combo1.Enabled = false;
  const std::string before = sample->Combo1.Text();
  Write(*editable().lineEdit(), "Utah");
  Settle();

  EXPECT_EQ(sample->Combo1.Text(), before);
  EXPECT_EQ(editable().currentText().toStdString(), before);
  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(ComboBoxOnScreen, ForgetsWhatAssistiveSoftwareWroteIntoAWindowThatGoes) {
  Write(*editable().lineEdit(), "Utah");
  sample.Unload();
  Settle();

  EXPECT_EQ(sample.IfLoaded(), nullptr);
  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(ComboBoxOnScreen, ShowsTheQuestionMarkThatItHoldsAlready) {
  sample->Combo1.Text = "Ut?";
  editable().lineEdit()->setSelection(2, 1);
  QInputMethodEvent omega;
  omega.setCommitString(QString::fromUtf8("Ω"));
  QApplication::sendEvent(editable().lineEdit(), &omega);

  EXPECT_EQ(sample->Combo1.Text(), "Ut?");
  EXPECT_EQ(editable().currentText(), "Ut?");
}

TEST_F(ComboBoxOnScreen, KeepsAByteThatItCannotShowWhileTheRestIsEdited) {
  sample->Combo1.Text = "\x81";
  QTest::keyClicks(editable().lineEdit(), "5");

  EXPECT_EQ(sample->Combo1.Text(),
            "\x81"
            "5");
  EXPECT_EQ(editable().currentText(), "?5");
}

TEST_F(ComboBoxOnScreen, TypingAnEntrysTextIsNoPicking) {
  editable().setFocus();
  QTest::keyClicks(editable().lineEdit(), "Utah");
  QTest::keyClick(editable().lineEdit(), Qt::Key_Return);
  QTest::keyClick(editable().lineEdit(), Qt::Key_Tab);
  Settle();

  EXPECT_EQ(rig.events(), Lines({"left with Utah"}));
}

TEST_F(ComboBoxOnScreen, ShowsATextThatIsNoEntry) {
  sample->Combo1.Text = "Kansas";
  EXPECT_EQ(SpokenValue(editable()), "Kansas");

  sample->Combo1.Text = "Utah";
  EXPECT_EQ(SpokenValue(editable()), "Utah");
  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(ComboBoxOnScreen, OpeningTheListDoesNotLeaveTheBox) {
  editable().setFocus();
  editable().showPopup();
  Settle();
  editable().hidePopup();
  Settle();

  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(ComboBoxOnScreen, FixedListIsPickedByTheKeyboard) {
  sample->Combo2.Text = "Keep";
  fixed().setFocus();
  QTest::keyClick(&fixed(), Qt::Key_Down);

  EXPECT_EQ(rig.events(), Lines({"chose 1"}));
  EXPECT_EQ(SpokenValue(fixed()), "Update");
}

TEST_F(ComboBoxOnScreen, FixedListShowsNothingForATextThatIsNoEntry) {
  sample->Combo2.Text = "Update";
  EXPECT_EQ(fixed().currentText(), "Update");

  sample->Combo2.Text = "";
  EXPECT_EQ(fixed().currentText(), "");
}

TEST_F(ComboBoxOnScreen, WheelOverAClosedBoxPicksNothing) {
  sample->Combo1.Text = "Utah";
  sample->Combo2.Text = "Keep";
  const auto turn = [](QWidget &widget) {
    const QPointF place(5, 5);
    for (const int turned : {-120, 120}) {
      QWheelEvent wheel(place, widget.mapToGlobal(place), {}, {0, turned}, Qt::NoButton, Qt::NoModifier,
                        Qt::NoScrollPhase, false);
      QApplication::sendEvent(&widget, &wheel);
    }
  };
  for (const char *in_use : {"Text1", "Combo1", "Combo2"}) {
    rig.widget(*sample, in_use).setFocus();
    ASSERT_TRUE(rig.widget(*sample, in_use).hasFocus());
    rig.events();
    turn(fixed());
    turn(editable());
    turn(*editable().lineEdit());
    EXPECT_EQ(rig.events(), Lines()) << in_use;
  }
  EXPECT_EQ(SpokenValue(fixed()), "Keep");
  EXPECT_EQ(SpokenValue(editable()), "Utah");
}

}  // namespace
}  // namespace borvane
