#include "desktop/settings/settings_file.h"

#include <QByteArray>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "desktop/windows_1252.h"

namespace borvane {
namespace {

/// The program's text of a value, or "missing".
std::string TextIn(const QByteArray &content, const char *name, const char *section = "General") {
  const std::optional<QString> text = ValueIn(content, section, name);
  return text ? ProgramText(*text) : "missing";
}

std::string TextOf(const QByteArray &raw) { return TextIn("x=" + raw + "\n", "x"); }

TEST(ValueIn, FindsAValueInItsSection) {
  const QByteArray content = "[General]\nArea=Utah\nad=\" 1\"\n\n[Hosts]\nMaker=127.0.0.1:80\nArea=other\n";
  EXPECT_EQ(TextIn(content, "Area"), "Utah");
  EXPECT_EQ(TextIn(content, "ad"), " 1");
  EXPECT_EQ(TextIn(content, "Maker"), "missing");
  EXPECT_EQ(TextIn(content, "Maker", "Hosts"), "127.0.0.1:80");
  EXPECT_EQ(TextIn(content, "Area", "Hosts"), "other");
  EXPECT_EQ(TextIn(content, "Area", "Others"), "missing");
  EXPECT_EQ(TextIn("", "Area"), "missing");
}

TEST(ValueIn, TakesWhatComesBeforeTheFirstSectionForGeneral) {
  EXPECT_EQ(TextIn("Area=Utah\n[Hosts]\nMaker=a\n", "Area"), "Utah");
}

TEST(ValueIn, TakesTheLastOfSeveralValuesWithOneName) {
  const QByteArray content = "[General]\nArea=1\nArea=2\n[Hosts]\nArea=3\n[General]\nArea=4\n";
  EXPECT_EQ(TextIn(content, "Area"), "4");
  EXPECT_EQ(TextIn(content, "Area", "Hosts"), "3");
}

TEST(ValueIn, TakesNamesInAnyCase) {
  EXPECT_EQ(TextIn("[GENERAL]\nAREA=Utah\n", "Area"), "Utah");
  EXPECT_EQ(TextIn("[hosts]\nmaker=a\n", "Maker", "Hosts"), "a");
}

TEST(ValueIn, TakesWhatPeopleAndTheirEditorsWrite) {
  constexpr const char *host = "192.0.2.10:17650";
  for (const char *content :
       {"\xEF\xBB\xBF[Hosts]\nMaker=192.0.2.10:17650\n",
        "[Hosts] ; ours\n  Maker = 192.0.2.10:17650 ; the \"school's\n", "[ Hosts ]# ours\n\tMaker=192.0.2.10:17650",
        "[Hosts]\r\n# Maker=1\r\nMaker=192.0.2.10:17650\r\n",
        "  ; a 12\" ruler\n[Hosts]\n# \\\nMaker=192.0.2.10:17650;\n ; Maker=2\n"}) {
    EXPECT_EQ(TextIn(content, "Maker", "Hosts"), host) << content;
    EXPECT_EQ(WithoutDamage(content), content);
  }
}

TEST(ValueIn, ReadsTexts) {
  EXPECT_EQ(TextOf(""), "");
  EXPECT_EQ(TextOf("  Los Angeles "), "Los Angeles");
  EXPECT_EQ(TextOf("El Centro, CA"), "El Centro, CA");
  EXPECT_EQ(TextOf("4,5"), "4,5");
  EXPECT_EQ(TextOf("a=b"), "a=b");
  EXPECT_EQ(TextOf("100 % @home"), "100 % @home");
  EXPECT_EQ(TextOf("Z\xc3\xbcrich"), "Z\xFCrich");
  EXPECT_EQ(TextOf(R"(" a; b, c=d " ; comment)"), " a; b, c=d ");
  EXPECT_EQ(TextOf(R"(one "and; two")"), "one and; two");
}

TEST(ValueIn, ReadsEscapes) {
  EXPECT_EQ(TextOf(R"(a\\b\"c\nd\0e)"), std::string("a\\b\"c\nd\0e", 9));
  EXPECT_EQ(TextOf(R"("a\\";b)"), "a\\");
  EXPECT_EQ(TextOf(R"(C:\Users\)"), R"(C:\Users\)") << "a backslash that escapes nothing is itself";
}

TEST(ValueIn, LooksAtEachByteOnlyOnce) {
  // A reader that went to the end for every line would need minutes.
  EXPECT_EQ(TextIn("a=1\n" + QByteArray("\\\n").repeated(5'000'000) + "b=2\n", "b"), "2");
  EXPECT_EQ(TextIn(QByteArray("\"\n").repeated(5'000'000) + "a=1\n", "a"), "1");
  EXPECT_EQ(TextIn("a=" + QByteArray("\\").repeated(10'000'000), "a").size(), 5'000'000U);
}

QByteArray WithText(const QByteArray &content, const char *name, const QString &text, const char *section = "General") {
  return WithValue(content, section, name, text);
}

TEST(WithValue, IsReadAgainAsItWas) {
  std::vector<QString> texts = {"", " ", " a", "a ", "a,b", "a;b", "a=b", "\"", "\\", "\\n", "[x]", "#", "; x"};
  for (ushort first = 0; first < 256; ++first) {
    for (const char *after : {"", "1", "\"", "f \n"})
      texts.push_back(QChar(first) + QString(after));
  }
  for (const QString &text : texts) {
    const QByteArray content = WithText("Area=x ; comment\nlast=y\n", "Area", text);
    EXPECT_EQ(ValueIn(content, "General", "Area"), text) << content.toStdString();
    EXPECT_EQ(TextIn(content, "last"), "y") << content.toStdString();
    EXPECT_EQ(WithoutDamage(content), content);
  }
}

TEST(WithValue, IsPlainToRead) {
  EXPECT_EQ(WithText("", "Area", "El Centro, CA"), "[General]\nArea=El Centro, CA\n");
  EXPECT_EQ(WithText("", "ad", " 1"), "[General]\nad=\" 1\"\n");
  EXPECT_EQ(WithText("", "LogCity", "a;\"b\"\n"), "[General]\nLogCity=\"a;\\\"b\\\"\\n\"\n");
}

TEST(WithValue, ChangesNothingButTheText) {
  const QByteArray content =
      "# The school's\r\n\r\n[Hosts]\r\n  Maker = a:1 ; ours\r\nSouthern=b\r\n\r\n; mine\r\n[General]\r\nArea=Utah\r\n";
  QByteArray expected = content;
  expected.replace("a:1", "192.0.2.10:80");
  EXPECT_EQ(WithText(content, "Maker", "192.0.2.10:80", "Hosts"), expected);
}

TEST(WithValue, ChangesTheValueThatCounts) {
  EXPECT_EQ(WithText("Area=1\n[General]\nArea=2\nRefresh=3\n", "Area", "4"), "Area=1\n[General]\nArea=4\nRefresh=3\n");
  EXPECT_EQ(WithText("[general]\narea = 1\n", "Area", "2"), "[general]\narea = 2\n");
}

TEST(WithValue, PutsATextWhereThereWasNone) {
  EXPECT_EQ(WithText("Area=\nRefresh=3\n", "Area", "4"), "Area=4\nRefresh=3\n");
  EXPECT_EQ(WithText("Area=", "Area", "4"), "Area=4");
  EXPECT_EQ(TextIn(WithText("Area= ; comment\n", "Area", "4"), "Area"), "4");
}

TEST(WithValue, AddsAMissingValueAtTheEndOfItsSection) {
  EXPECT_EQ(WithText("# mine\n[General]\nArea=Utah\n\n# ours\n[Hosts]\nMaker=a\n", "Refresh", "60"),
            "# mine\n[General]\nArea=Utah\nRefresh=60\n\n# ours\n[Hosts]\nMaker=a\n");
  EXPECT_EQ(WithText("Area=Utah\n[Hosts]\nMaker=a", "Refresh", "60"), "Area=Utah\nRefresh=60\n[Hosts]\nMaker=a");
  EXPECT_EQ(WithText("[General]\n[Hosts]\n", "Refresh", "60"), "[General]\nRefresh=60\n[Hosts]\n");
  EXPECT_EQ(WithText("[Hosts]\nMaker=a", "Southern", "b", "Hosts"), "[Hosts]\nMaker=a\nSouthern=b\n");
}

TEST(WithValue, AddsAMissingSectionAtTheEnd) {
  EXPECT_EQ(WithText("[Hosts]\nMaker=a\n", "Area", "Utah"), "[Hosts]\nMaker=a\n\n[General]\nArea=Utah\n");
  EXPECT_EQ(WithText("# mine", "Area", "Utah"), "# mine\n\n[General]\nArea=Utah\n");
}

TEST(WithoutDamage, LeavesAWholeFileAsItIs) {
  for (const char *content :
       {"", "\n", "[General]\nArea=Los Angeles\nad=\" 1\"\n\n[Hosts]\nSouthern=127.0.0.1:80\n", "Area=Los Ang",
        "Text=\"a\\\"b\\\\\"\nEmpty=\n", "; a \"comment\nArea=C:\\\n# \\\n", "[]\n[Hosts];x\n"})
    EXPECT_EQ(WithoutDamage(content), content);
}

TEST(WithoutDamage, ClosesQuotesAndBrackets) {
  EXPECT_EQ(WithoutDamage("[General]\nArea=\"Los Angeles\nRefresh=60\n"), "[General]\nArea=Los Angeles\nRefresh=60\n");
  EXPECT_EQ(WithoutDamage("Note=12\" ; x"), "Note=\"12 ; x\"\n");
  EXPECT_EQ(WithoutDamage("[Hosts\nMaker=a\n"), "[Hosts]\nMaker=a\n");
  EXPECT_EQ(WithoutDamage("[Hosts] x\nMaker=a\n"), "[Hosts]\nMaker=a\n");
}

TEST(WithoutDamage, LeavesOutWhatCannotBeRead) {
  EXPECT_EQ(WithoutDamage("# mine\nArea\n=x\n =y\nArea=Utah\n\x01\x02 garbage"), "# mine\nArea=Utah\n");
  EXPECT_EQ(WithoutDamage(QByteArray("a=1\nb=\0\nc=3\n", 13)), "a=1\nc=3\n");
  EXPECT_EQ(WithoutDamage(QByteArray(512, '\0')), "");
}

}  // namespace
}  // namespace borvane
