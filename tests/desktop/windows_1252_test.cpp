#include "desktop/windows_1252.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

#include "desktop/services/message_box.h"
#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

/// All bytes, in their order.
std::string AllBytes() {
  std::string all;
  for (int byte = 0; byte < 256; ++byte)
    all += static_cast<char>(byte);
  return all;
}

TEST(UnicodeText, TakesTheCharactersOfTheCodePage) {
  EXPECT_EQ(UnicodeText("A\xE9\x80\x99\x9F"), QString::fromUtf8("Aé€™Ÿ"));
}

TEST(UnicodeText, KeepsZerosAndLineEnds) {
  EXPECT_EQ(UnicodeText(std::string_view("a\0b\r\n", 5)), QString::fromLatin1("a\0b\r\n", 5));
}

TEST(UnicodeText, ComesBackWithEachOfItsBytes) { EXPECT_EQ(ProgramText(UnicodeText(AllBytes())), AllBytes()); }

TEST(ShownText, HasAQuestionMarkForEachByteThatTheCodePageLeavesOpen) {
  std::string shown = AllBytes();
  for (const std::size_t open : {0x81U, 0x8DU, 0x8FU, 0x90U, 0x9DU})
    shown[open] = '?';

  EXPECT_EQ(ShownText(AllBytes()), UnicodeText(shown));
}

/// What of the sample window's text is shown, part by part.
class OpenByte : public testing::Test {
 protected:
  static constexpr const char *text = "a\x81z";

  void ShowInEachControl() {
    sample->Link1.Click = [] {};
    for (Label *label : {&sample->Label1, &sample->Link1})
      label->Caption = text;
    sample->Frame1.Caption = text;
    sample->Option1(0).Caption = text;
    sample->Check1.Caption = text;
    sample->Command1.Caption = text;
    sample->Text1.Text = text;
    sample->Combo1.Text = text;
    sample->StatusBar1.Panels(1).Text = text;
    sample->Text1.ToolTipText = text;
    sample->Caption = text;
    sample->ListView1.ColumnHeaders.Add(text);
    sample->ListView1.ListItems.Add({text});
    sample->Show();
    Settle();
  }

  ScreenRig rig;
};

TEST_F(OpenByte, IsAQuestionMarkInEveryControl) {
  ShowInEachControl();
  for (const char *name : {"Label1", "Link1", "Frame1", "Option1(0)", "Check1", "Command1"})
    EXPECT_EQ(SpokenName(rig.widget(*sample, name)), "a?z") << name;
  for (const char *name : {"Text1", "Combo1"})
    EXPECT_EQ(SpokenValue(rig.widget(*sample, name)), "a?z") << name;
  EXPECT_EQ(SpokenName(*rig.widget(*sample, "StatusBar1").findChild<QLabel *>()), "a?z");
  EXPECT_EQ(rig.widget(*sample, "Text1").toolTip(), "a?z");
  EXPECT_EQ(rig.window(*sample).windowTitle(), "a?z");
}

TEST_F(OpenByte, IsAQuestionMarkInRowsAndTheirToolTipsAndInColumnTitles) {
  ShowInEachControl();
  const QAbstractItemModel &model = *rig.widget<QAbstractItemView>(*sample, "ListView1").model();

  EXPECT_EQ(model.index(0, 0).data(Qt::DisplayRole), "a?z");
  EXPECT_EQ(model.index(0, 0).data(Qt::ToolTipRole), "a?z");
  EXPECT_EQ(model.headerData(3, Qt::Horizontal), "a?z");
}

TEST_F(OpenByte, IsAQuestionMarkInAMessageBox) {
  QString seen;
  QTimer::singleShot(0, [&] {
    auto *box = dynamic_cast<QMessageBox *>(QApplication::activeModalWidget());
    seen = box->windowTitle() + " " + box->text();
    box->close();
  });
  QtMessageBox().Show(text, text, MessageButtons::YesNo, MessageIcon::Question);

  EXPECT_EQ(seen, "a?z a?z");
}

TEST_F(OpenByte, StaysInTheProgramsText) {
  ShowInEachControl();

  EXPECT_EQ(sample->Text1.Text(), text);
  EXPECT_EQ(sample->Label1.Caption(), text);
}

TEST(EditedText, KeepsTheBytesThatTheUserLeftAlone) {
  EXPECT_EQ(EditedText("\x81-\x8D", "?-?"), "\x81-\x8D");
  EXPECT_EQ(EditedText("\x81-\x8D", "?-x?"), "\x81-x\x8D");
  EXPECT_EQ(EditedText("\x81-\x8D", "x?-?"), "x\x81-\x8D");
  EXPECT_EQ(EditedText("\x81-\x8D", "?-?x"), "\x81-\x8Dx");
  EXPECT_EQ(EditedText("\x81-\x8D", "?-"), "\x81-");
  EXPECT_EQ(EditedText("\x81-\x8D", "-?"), "-\x8D");
  EXPECT_EQ(EditedText("\x81-\x8D", ""), "");
}

TEST(EditedText, IsWhatTheUserTyped) {
  EXPECT_EQ(EditedText("", "10"), "10");
  EXPECT_EQ(EditedText("aaa", "aa"), "aa");
  EXPECT_EQ(EditedText("aa", "aaa"), "aaa");
  EXPECT_EQ(EditedText("10", QString::fromUtf8("1Ω0")), "1?0");
  EXPECT_EQ(EditedText("10", QString::fromUtf8("1🌋0")), "1?0");
}

TEST(ProgramText, PutsAQuestionMarkForWhatTheCodePageLacks) {
  EXPECT_EQ(ProgramText(QString::fromUtf8("Ω Łódź")),
            "? ?\xF3"
            "d?");
}

TEST(ProgramText, PutsOneQuestionMarkForACharacterBeyondSixteenBits) {
  EXPECT_EQ(ProgramText(QString::fromUtf8("a🌋b")), "a?b");
}

TEST(ProgramText, PutsAQuestionMarkForALetterWhoseNumberABytesCharacterHas) {
  EXPECT_EQ(ProgramText(QString(QChar(0x0152))), "\x8C");
  EXPECT_EQ(ProgramText(QString(QChar(0x008C))), "?");
}

}  // namespace
}  // namespace borvane
