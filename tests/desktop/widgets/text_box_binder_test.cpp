#include <QAccessible>
#include <QApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QToolButton>
#include <QtTest/QTest>
#include <initializer_list>
#include <string>

#include <gtest/gtest.h>

#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

class TextBoxOnScreen : public testing::Test {
 protected:
  TextBoxOnScreen() {
    sample->Text1.Change = [this] { rig.note("change " + sample->Text1.Text()); };
    sample->Text1.LostFocus = [this] { rig.note("left with " + sample->Text1.Text()); };
    sample->Show();
    Settle();
    rig.events();
  }

  QWidget &box() const { return rig.widget(*sample, "Text1"); }

  ScreenRig rig;
};

TEST_F(TextBoxOnScreen, ShowsItsText) {
  EXPECT_EQ(SpokenValue(box()), "10");

  sample->Text1.Text = "caf\xE9";

  EXPECT_EQ(SpokenValue(box()), "café");
}

TEST_F(TextBoxOnScreen, RaisesChangeAtEachKey) {
  QTest::keyClicks(&box(), "5x");

  EXPECT_EQ(rig.events(), Lines({"change 105", "change 105x"}));
}

TEST_F(TextBoxOnScreen, RaisesOneChangeForAKeyAndForAChangeByTheProgram) {
  QTest::keyClicks(&box(), "5");
  Settle();
  EXPECT_EQ(rig.events(), Lines({"change 105"}));
  sample->Text1.Text = "7";
  Settle();
  EXPECT_EQ(rig.events(), Lines({"change 7"}));
}

TEST_F(TextBoxOnScreen, TakesWhatAssistiveSoftwareWrites) {
  box().setFocus();
  Write(box(), "caf\u00E9");
  Settle();
  EXPECT_EQ(sample->Text1.Text(), "caf\xE9");
  QAccessible::queryAccessibleInterface(&box())->editableTextInterface()->deleteText(1, 4);
  Settle();

  EXPECT_EQ(rig.events(), Lines({"change caf\xE9", "change c"}));
}

TEST_F(TextBoxOnScreen, HoldsAQuestionMarkForWhatAssistiveSoftwareWritesAndItCannotHold) {
  box().setFocus();
  Write(box(), QString::fromUtf8("5Ω"));
  Settle();

  EXPECT_EQ(rig.events(), Lines({"change 5?"}));
  EXPECT_EQ(SpokenValue(box()), "5?");
}

TEST_F(TextBoxOnScreen, IsVisitedByAssistiveSoftwareThatWritesFromElsewhere) {
  sample->Text1.GotFocus = [this] { rig.note("entered"); };
  rig.widget(*sample, "Check1").setFocus();
  Settle();
  rig.events();
  Write(box(), "5");
  Settle();

  EXPECT_EQ(rig.events(), Lines({"entered", "change 5", "left with 5"}));
}

TEST_F(TextBoxOnScreen, MayUnloadItsWindowWhileAssistiveSoftwareWrites) {
  using Events = std::initializer_list<Event<> TextBox::*>;
  for (const auto event : Events{&TextBox::GotFocus, &TextBox::Change, &TextBox::LostFocus}) {
    sample->Show();
    rig.widget(*sample, "Check1").setFocus();
    Settle();
    sample->Text1.*event = [] { sample.Unload(); };
    Write(box(), "5");
    Settle();

    EXPECT_EQ(sample.IfLoaded(), nullptr);
  }
}

TEST_F(TextBoxOnScreen, ForgetsWhatAssistiveSoftwareWroteIntoAWindowThatGoes) {
  Write(box(), "5");
  sample.Unload();
  Settle();

  EXPECT_EQ(sample.IfLoaded(), nullptr);
  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(TextBoxOnScreen, KeepsATextThatIsLongerThanItCanShow) {
  const std::string text(40'000, '5');
  sample->Text1.Change = nullptr;
  sample->Text1.Text = text;
  Settle();

  EXPECT_EQ(sample->Text1.Text(), text);
}

TEST_F(TextBoxOnScreen, KeepsItsTextFromAssistiveSoftwareWhileItIsDisabled) {
  sample->Text1.Enabled = false;
  const std::string before = sample->Text1.Text();
  Write(box(), "5");
  Settle();

  EXPECT_EQ(rig.events(), Lines());
  EXPECT_EQ(sample->Text1.Text(), before);
  EXPECT_EQ(SpokenValue(box()), before);
}

TEST_F(TextBoxOnScreen, WithManyLinesTakesWhatAssistiveSoftwareWritesOnce) {
  sample->Text3.Change = [this] { rig.note("lines " + sample->Text3.Text()); };
  Write(rig.widget(*sample, "Text3"), "5");
  Settle();

  EXPECT_EQ(rig.events(), Lines({"lines 5"}));
}

TEST_F(TextBoxOnScreen, ShowsTheQuestionMarkThatItHolds) {
  QInputMethodEvent omega;
  omega.setCommitString(QString::fromUtf8("Ω"));
  QApplication::sendEvent(&box(), &omega);

  EXPECT_EQ(rig.events(), Lines({"change 10?"}));
  EXPECT_EQ(SpokenValue(box()), "10?");
}

TEST_F(TextBoxOnScreen, ShowsTheQuestionMarkThatItHoldsAlready) {
  sample->Text1.Text = "10?";
  rig.events();
  auto &edit = rig.widget<QLineEdit>(*sample, "Text1");
  edit.setSelection(2, 1);
  QInputMethodEvent omega;
  omega.setCommitString(QString::fromUtf8("Ω"));
  QApplication::sendEvent(&edit, &omega);

  EXPECT_EQ(rig.events(), Lines());
  EXPECT_EQ(sample->Text1.Text(), "10?");
  EXPECT_EQ(SpokenValue(edit), "10?");
}

TEST_F(TextBoxOnScreen, KeepsAByteThatItCannotShowWhileTheRestIsEdited) {
  sample->Text1.Text = "\x81";
  QTest::keyClicks(&box(), "5");

  EXPECT_EQ(sample->Text1.Text(),
            "\x81"
            "5");
  EXPECT_EQ(SpokenValue(box()), "?5");
}

TEST_F(TextBoxOnScreen, MayUnloadItsWindowWhileItIsTypedInto) {
  sample->Text1.Change = [] { sample.Unload(); };
  QTest::keyClicks(&box(), "5");
  Settle();

  EXPECT_EQ(sample.IfLoaded(), nullptr);
}

TEST_F(TextBoxOnScreen, KeepsTheCursorWhenTheTextChangesUnderIt) {
  auto &edit = rig.widget<QLineEdit>(*sample, "Text1");
  edit.setCursorPosition(1);
  sample->Text1.Text = "7123";
  QTest::keyClicks(&edit, "x");

  EXPECT_EQ(sample->Text1.Text(), "7x123");
}

TEST_F(TextBoxOnScreen, TakesNoKeysWhileItIsDisabled) {
  sample->Text1.Enabled = false;
  QTest::keyClicks(&box(), "5");

  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(TextBoxOnScreen, IsLeftForAnotherControl) {
  box().setFocus();
  QTest::keyClicks(&box(), "5");
  QTest::keyClick(&box(), Qt::Key_Tab);

  EXPECT_EQ(rig.events(), Lines({"change 105", "left with 105"}));
}

TEST_F(TextBoxOnScreen, IsLeftForAButtonOfAToolbar) {
  box().setFocus();
  rig.widget<QToolButton>(*sample, "quit").setFocus(Qt::TabFocusReason);
  EXPECT_EQ(rig.events(), Lines({"left with 10"}));

  sample->Toolbar1.LostFocus = [this] { rig.note("toolbar left"); };
  rig.widget<QToolButton>(*sample, "refresh").setFocus(Qt::TabFocusReason);
  EXPECT_EQ(rig.events(), Lines());
  box().setFocus();
  EXPECT_EQ(rig.events(), Lines({"toolbar left"}));
}

TEST_F(TextBoxOnScreen, IsLeftForAControlOfAnotherWindow) {
  box().setFocus();
  other_form->Show();
  other_form->Text1.Visible = true;
  QWidget &other = rig.widget(*other_form, "Text1");
  QApplication::setActiveWindow(&rig.window(*other_form));
  other.setFocus();
  Settle();

  EXPECT_EQ(rig.events(), Lines({"left with 10"}));
}

TEST_F(TextBoxOnScreen, IsNotLeftForAnotherProgram) {
  box().setFocus();
  Settle();
  QApplication::setActiveWindow(nullptr);
  Settle();
  EXPECT_FALSE(box().hasFocus());

  QApplication::setActiveWindow(&rig.window(*sample));
  Settle();

  EXPECT_TRUE(box().hasFocus());
  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(TextBoxOnScreen, IsLeftWhenTheUserComesBackToAnotherControl) {
  box().setFocus();
  QApplication::setActiveWindow(nullptr);
  rig.widget(*sample, "Text2").setFocus();
  QApplication::setActiveWindow(&rig.window(*sample));
  Settle();

  EXPECT_EQ(rig.events(), Lines({"left with 10"}));
}

TEST_F(TextBoxOnScreen, IsLeftWhenItsWindowHides) {
  box().setFocus();
  sample->Hide();
  Settle();
  EXPECT_EQ(rig.events(), Lines({"left with 10"}));

  sample->Show();
  QApplication::setActiveWindow(&rig.window(*sample));
  Settle();
  ASSERT_TRUE(box().hasFocus());
  rig.widget(*sample, "Text2").setFocus();
  EXPECT_EQ(rig.events(), Lines({"left with 10"})) << "the user has worked in it once more";
}

TEST_F(TextBoxOnScreen, IsLeftOnceWhenItsWindowHidesAndAnotherHasTheKeyboard) {
  box().setFocus();
  other_form->Show();
  rig.events();
  QApplication::setActiveWindow(&rig.window(*sample));
  box().setFocus();
  Settle();
  sample->Hide();
  QApplication::setActiveWindow(&rig.window(*other_form));
  rig.widget(*other_form, "Text1").setFocus();
  Settle();

  EXPECT_EQ(rig.events(), Lines({"left with 10"}));
}

TEST_F(TextBoxOnScreen, SelectsWhatTheProgramSelects) {
  auto &edit = rig.widget<QLineEdit>(*sample, "Text1");
  sample->Text1.Text = "90210 x";
  sample->Text1.Selection = {.start = 0, .length = 7};
  EXPECT_EQ(edit.selectedText(), "90210 x");

  sample->Text1.Selection = {.start = 2, .length = 3};
  EXPECT_EQ(edit.selectedText(), "210");
  sample->Text1.Selection = {.start = 4, .length = 0};
  EXPECT_EQ(edit.selectedText(), "");
  EXPECT_EQ(edit.cursorPosition(), 4);
}

TEST_F(TextBoxOnScreen, SelectsNoMoreThanThereIs) {
  auto &edit = rig.widget<QLineEdit>(*sample, "Text1");
  sample->Text1.Selection = {.start = 1, .length = 30000};
  EXPECT_EQ(edit.selectedText(), "0");
  sample->Text1.Selection = {.start = -5, .length = -1};
  EXPECT_EQ(edit.selectedText(), "");
  EXPECT_EQ(edit.cursorPosition(), 0);
  sample->Text1.Selection = {.start = 40, .length = 1};
  EXPECT_EQ(edit.cursorPosition(), 2);
}

TEST_F(TextBoxOnScreen, ReportsWhatTheUserSelects) {
  box().setFocus();
  QTest::keyClick(&box(), Qt::Key_Home);
  EXPECT_EQ(sample->Text1.Selection(), (TextSelection{.start = 0, .length = 0}));
  QTest::keyClick(&box(), Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(sample->Text1.Selection(), (TextSelection{.start = 0, .length = 1}));
  QTest::keyClick(&box(), Qt::Key_End);
  EXPECT_EQ(sample->Text1.Selection(), (TextSelection{.start = 2, .length = 0}));

  EXPECT_EQ(rig.events(), Lines()) << "selecting raises nothing";
}

/// As a box does whose text is not what was asked for, each time that it is left.
TEST_F(TextBoxOnScreen, SelectsItsTextOnceMoreWhenItIsLeftAgain) {
  const auto text_size = [] { return static_cast<int>(sample->Text1.Text().size()); };
  sample->Text1.LostFocus = [&] { sample->Text1.Selection = {.start = 0, .length = text_size()}; };
  auto &edit = rig.widget<QLineEdit>(*sample, "Text1");
  for (int time = 0; time < 2; ++time) {
    QTest::mouseClick(&edit, Qt::LeftButton, {}, QPoint(3, 3));
    EXPECT_EQ(edit.selectedText(), "");
    QTest::keyClick(&edit, Qt::Key_Tab);
    EXPECT_EQ(edit.selectedText(), "10");
    EXPECT_FALSE(edit.hasFocus());
  }
}

TEST_F(TextBoxOnScreen, IsEnteredAfterTheOtherIsLeft) {
  sample->Text2.GotFocus = [this] { rig.note("entered"); };
  box().setFocus();
  EXPECT_EQ(rig.events(), Lines());
  QTest::keyClick(&box(), Qt::Key_Tab);

  EXPECT_EQ(rig.events(), Lines({"left with 10", "entered"}));
}

TEST_F(TextBoxOnScreen, IsEnteredByAClick) {
  sample->Text1.GotFocus = [this] { rig.note("entered"); };
  rig.widget(*sample, "Text2").setFocus();
  QTest::mouseClick(&box(), Qt::LeftButton);
  EXPECT_EQ(rig.events(), Lines({"entered"}));

  QTest::mouseClick(&box(), Qt::LeftButton);
  EXPECT_EQ(rig.events(), Lines()) << "it has the keyboard";
}

TEST_F(TextBoxOnScreen, IsNotEnteredWhenTheUserComesBackFromAnotherProgram) {
  sample->Text1.GotFocus = [this] { rig.note("entered"); };
  box().setFocus();
  Settle();
  EXPECT_EQ(rig.events(), Lines({"entered"}));
  QApplication::setActiveWindow(nullptr);
  Settle();
  QApplication::setActiveWindow(&rig.window(*sample));
  Settle();

  EXPECT_TRUE(box().hasFocus());
  EXPECT_EQ(rig.events(), Lines());
}

TEST_F(TextBoxOnScreen, IsNotEnteredWhenTheHandlerOfTheOtherTakesTheWindowAway) {
  sample->Text1.LostFocus = [this] {
    rig.note("left");
    sample.Unload();
  };
  sample->Text2.GotFocus = [this] { rig.note("entered"); };
  box().setFocus();
  QTest::keyClick(&box(), Qt::Key_Tab);
  Settle();

  EXPECT_EQ(rig.events(), Lines({"left"}));
}

TEST_F(TextBoxOnScreen, IsNotEnteredWhenTheHandlerOfTheOtherMovesTheKeyboardOn) {
  sample->Text1.LostFocus = [this] { rig.widget(*sample, "Check1").setFocus(); };
  sample->Text2.GotFocus = [this] { rig.note("entered"); };
  sample->Check1.GotFocus = [this] { rig.note("box entered"); };
  box().setFocus();
  QTest::keyClick(&box(), Qt::Key_Tab);

  EXPECT_EQ(rig.events(), Lines({"box entered"}));
}

TEST_F(TextBoxOnScreen, IsNotLeftWhenItHasNotBeenEntered) {
  for (const bool unloads : {false, true}) {
    sample->Text1.LostFocus = [unloads] {
      if (unloads)
        sample.Unload();
      else
        sample->Hide();
    };
    sample->Text2.GotFocus = [this] { rig.note("entered"); };
    sample->Text2.LostFocus = [this] { rig.note("left"); };
    sample->Show();
    Settle();
    box().setFocus();
    rig.events();
    QTest::keyClick(&box(), Qt::Key_Tab);
    Settle();

    EXPECT_EQ(rig.events(), Lines()) << unloads;
  }
}

TEST_F(TextBoxOnScreen, IsNotLeftWhenAnotherWindowHides) {
  other_form->Show();
  sample->Show();
  QApplication::setActiveWindow(&rig.window(*sample));
  box().setFocus();
  Settle();
  rig.events();
  other_form->Hide();
  Settle();

  EXPECT_EQ(rig.events(), Lines());
}

}  // namespace
}  // namespace borvane
