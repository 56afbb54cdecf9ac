#include "desktop/windows_1252.h"

#include <gtest/gtest.h>

namespace borvane {
namespace {

TEST(ShownText, TakesTheCharactersOfTheCodePage) {
  EXPECT_EQ(ShownText("A\xE9\x80\x99\x9F"), QString::fromUtf8("Aé€™Ÿ"));
}

TEST(ShownText, KeepsZerosAndLineEnds) {
  EXPECT_EQ(ShownText(std::string_view("a\0b\r\n", 5)), QString::fromLatin1("a\0b\r\n", 5));
}

TEST(ProgramText, GivesEachByteBackAsItWent) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte)
    all += static_cast<char>(byte);

  EXPECT_EQ(ProgramText(ShownText(all)), all);
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
