#include "desktop/widgets/lines_edit.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QScrollBar>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

/// A text box with many lines, with the user in it.
class LinesOnScreen : public testing::Test {
 protected:
  LinesOnScreen() {
    sample->Text3.Change = [this] { rig.note("change"); };
    sample->Text3.LostFocus = [this] { rig.note("left"); };
    sample->Show();
    Settle();
    edit().setFocus();
    rig.events();
  }

  LinesEdit &edit() const { return rig.widget<LinesEdit>(*sample, "Text3"); }

  ScreenRig rig;
};

TEST_F(LinesOnScreen, ShowsTheLinesOfItsText) {
  sample->Text3.Text = "first\r\n\r\ncaf\xE9";

  EXPECT_EQ(edit().toPlainText(), QString::fromUtf8("first\n\ncafé"));
  EXPECT_EQ(SpokenValue(edit()), "first\n\ncafé");
  EXPECT_EQ(rig.events(), Lines({"change"})) << "once, by the program";
}

TEST_F(LinesOnScreen, EndsALineWithACarriageReturnAndALineFeed) {
  QTest::keyClicks(&edit(), "a");
  QTest::keyClick(&edit(), Qt::Key_Return);
  QTest::keyClick(&edit(), Qt::Key_Enter);
  QTest::keyClick(&edit(), Qt::Key_Return, Qt::ShiftModifier);
  QTest::keyClicks(&edit(), "b");

  EXPECT_EQ(sample->Text3.Text(), "a\r\n\r\n\r\nb");
  EXPECT_EQ(rig.events(), Lines({"change", "change", "change", "change", "change"}));
}

TEST_F(LinesOnScreen, KeepsLineEndsOfAnyKindThatTheProgramWrote) {
  sample->Text3.Text = "a\nb\rc";
  EXPECT_EQ(edit().blockCount(), 3);
  EXPECT_EQ(sample->Text3.Text(), "a\nb\rc");
  QTest::keyClick(&edit(), Qt::Key_End, Qt::ControlModifier);
  QTest::keyClicks(&edit(), "d");

  EXPECT_EQ(sample->Text3.Text(), "a\r\nb\r\ncd");
}

TEST_F(LinesOnScreen, IsLeftByTheTabKey) {
  QTest::keyClicks(&edit(), "a");
  QTest::keyClick(&edit(), Qt::Key_Tab);

  EXPECT_FALSE(edit().hasFocus());
  EXPECT_EQ(sample->Text3.Text(), "a");
  EXPECT_EQ(rig.events(), Lines({"change", "left"}));
}

TEST_F(LinesOnScreen, KeepsBytesThatItCannotShow) {
  sample->Text3.Text = "\x81\xA0";
  QTest::keyClick(&edit(), Qt::Key_End);
  QTest::keyClicks(&edit(), "5");

  EXPECT_EQ(sample->Text3.Text(),
            "\x81\xA0"
            "5");
}

TEST_F(LinesOnScreen, ShowsTheQuestionMarkThatItHolds) {
  QInputMethodEvent omega;
  omega.setCommitString(QString::fromUtf8("Ω"));
  QApplication::sendEvent(&edit(), &omega);

  EXPECT_EQ(sample->Text3.Text(), "?");
  EXPECT_EQ(edit().toPlainText(), "?");
}

TEST_F(LinesOnScreen, KeepsTheCursorWhenTheTextChangesUnderIt) {
  sample->Text3.Text = "one\r\ntwo";
  edit().setCursorPosition(5);
  sample->Text3.Text = "One\r\nTwo";
  QTest::keyClicks(&edit(), "x");

  EXPECT_EQ(sample->Text3.Text(), "One\r\nxTwo");
}

TEST_F(LinesOnScreen, CountsBothCharactersOfALineEndInASelection) {
  sample->Text3.Text = "one\r\ntwo\r\nthree";
  sample->Text3.Selection = {.start = 5, .length = 3};
  EXPECT_EQ(edit().textCursor().selectedText(), "two");

  edit().selectAll();
  EXPECT_EQ(sample->Text3.Selection(), (TextSelection{.start = 0, .length = 15}));
  QTest::keyClick(&edit(), Qt::Key_End, Qt::ControlModifier);
  QTest::keyClick(&edit(), Qt::Key_Left, Qt::ShiftModifier);
  EXPECT_EQ(sample->Text3.Selection(), (TextSelection{.start = 14, .length = 1}));
}

TEST_F(LinesOnScreen, ScrollsToWhatIsTyped) {
  EXPECT_TRUE(edit().verticalScrollBar()->isVisible());
  EXPECT_EQ(edit().verticalScrollBar()->maximum(), 0);
  for (int line = 0; line < 10; ++line)
    QTest::keyClick(&edit(), Qt::Key_Return);
  Settle();

  EXPECT_GT(edit().verticalScrollBar()->maximum(), 0);
  EXPECT_TRUE(edit().viewport()->rect().contains(edit().cursorRect()));
}

TEST_F(LinesOnScreen, BreaksALongLineInsteadOfHidingItsEnd) {
  QTest::keyClicks(&edit(), QString(100, QLatin1Char('W')));
  Settle();

  EXPECT_EQ(edit().horizontalScrollBar()->maximum(), 0);
  EXPECT_FALSE(edit().horizontalScrollBar()->isVisible());
  EXPECT_GT(edit().verticalScrollBar()->maximum(), 0);
}

TEST_F(LinesOnScreen, TakesPastedTextWithoutItsLooks) {
  edit().insertPlainText("x\ny");
  EXPECT_EQ(sample->Text3.Text(), "x\r\ny");
}

TEST_F(LinesOnScreen, MayUnloadItsWindowWhileItIsTypedInto) {
  sample->Text3.Change = [] { sample.Unload(); };
  QTest::keyClicks(&edit(), "5");
  Settle();

  EXPECT_EQ(sample.IfLoaded(), nullptr);
}

TEST_F(LinesOnScreen, TakesNoKeysWhileItIsDisabled) {
  sample->Text3.Enabled = false;
  QTest::keyClicks(&edit(), "5");

  EXPECT_EQ(rig.events(), Lines({"left"}));
}

/// Its edge is that of a line's box, so that the user sees which one has the keyboard.
TEST_F(LinesOnScreen, HasTheColourOfTheHighlightAroundItWhileItHasTheKeyboard) {
  const QColor highlight = QApplication::palette().color(QPalette::Highlight);
  const auto edge = [this] {
    Settle();
    return Picture(edit()).pixelColor(0, edit().height() / 2);
  };
  EXPECT_EQ(edge(), highlight);

  rig.widget(*sample, "Text1").setFocus();
  EXPECT_NE(edge(), highlight);
}

}  // namespace
}  // namespace borvane
