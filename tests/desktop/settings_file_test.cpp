#include "desktop/services/settings_file.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "desktop/windows_1252.h"

namespace borvane {
namespace {

TEST(IsWholeSettingsFile, TakesWhatTheStoreWrites) {
  EXPECT_TRUE(IsWholeSettingsFile(""));
  EXPECT_TRUE(IsWholeSettingsFile("[General]\nArea=Los Angeles\nad=\" 1\"\n\n[Hosts]\nSouthern=127.0.0.1:80\n"));
  EXPECT_TRUE(IsWholeSettingsFile("Text=\"a\\\"b\\\\\"\nEmpty=\nLong=one,\\\n two\n"));
  EXPECT_TRUE(IsWholeSettingsFile("; a \"remark\nArea=x\n"));
}

TEST(IsWholeSettingsFile, TakesWhatPeopleWrite) {
  EXPECT_TRUE(IsWholeSettingsFile("\xEF\xBB\xBF[General]\r\nArea=x\r\n"));
  EXPECT_TRUE(IsWholeSettingsFile("[Hosts] ; ours\nMaker=192.0.2.10:17650 ; the \"school's\n"));
  EXPECT_TRUE(IsWholeSettingsFile("# remark\n  ; a 12\" ruler\n\t# \\\nArea=x\r"));
}

TEST(IsWholeSettingsFile, SeesThatTheEndIsMissing) {
  EXPECT_FALSE(IsWholeSettingsFile("[General]\nArea=Los Ang"));
  EXPECT_FALSE(IsWholeSettingsFile("[General]\nArea=\"Los Angeles\nRefresh=60\n"));
  EXPECT_FALSE(IsWholeSettingsFile(QByteArray(512, '\0')));
}

TEST(IsWholeSettingsFile, SeesLinesThatAreNoValues) {
  EXPECT_FALSE(IsWholeSettingsFile("[General\nArea=x\n"));
  EXPECT_FALSE(IsWholeSettingsFile("Area\n"));
  EXPECT_FALSE(IsWholeSettingsFile("=x\n"));
  EXPECT_FALSE(IsWholeSettingsFile(" =x\n"));
  EXPECT_FALSE(IsWholeSettingsFile("[General] x\nArea=x\n"));
  EXPECT_FALSE(IsWholeSettingsFile(QByteArray("a=1\nb=\0\nc=3\n", 13)));
}

/// The text that stands for the raw one, or what there is in its place.
std::string TextOf(const QByteArray &raw) {
  const StoredValue value = ValueOf(raw);
  if (const auto *text = std::get_if<std::string>(&value))
    return *text;
  const auto *number = std::get_if<std::uint32_t>(&value);
  return number == nullptr ? "no text" : "the number " + std::to_string(*number);
}

TEST(ValueOf, ReadsWhatStandsThere) {
  EXPECT_EQ(TextOf(""), "");
  EXPECT_EQ(TextOf("Los Angeles"), "Los Angeles");
  EXPECT_EQ(TextOf(R"(" a; b, c=d ")"), " a; b, c=d ");
  EXPECT_EQ(TextOf("Z\xc3\xbcrich"), "Z\xFCrich");
  EXPECT_EQ(TextOf("100 %"), "100 %");
}

TEST(ValueOf, ReadsTheCommaThatSomebodyHasWrittenInByHand) {
  EXPECT_EQ(TextOf("El Centro, CA"), "El Centro, CA");
  EXPECT_EQ(TextOf("4,5"), "4,5");
  EXPECT_EQ(TextOf(R"("One", Two)"), "One, Two");
}

TEST(ValueOf, ReadsEscapes) {
  EXPECT_EQ(TextOf(R"(\a\b\f\n\r\t\v\"\?\'\\)"), "\a\b\f\n\r\t\v\"?'\\");
  EXPECT_EQ(TextOf(R"(\x41\x1z\101\0)"), std::string("A\1zA\0", 5));
  EXPECT_EQ(TextOf("one,\\\n two"), "one, two");
  EXPECT_EQ(TextOf(R"(a\qb\)"), "ab");
}

TEST(ValueOf, TellsNumbersAndOtherValuesFromTexts) {
  EXPECT_EQ(TextOf(R"(@Variant(\0\0\0\x2\0\0\0*))"), "the number 42");
  EXPECT_EQ(TextOf(R"(@Variant(\0\0\0\x3\xee\x6b\x28\0))"), "the number 4000000000");
  EXPECT_EQ(TextOf(R"(@Variant(\0\0\0\x1\x1))"), "no text");
  EXPECT_EQ(TextOf("@Variant()"), "no text");
  EXPECT_EQ(TextOf("@Invalid()"), "no text");
  EXPECT_EQ(TextOf(R"(@String(a\0b))"), std::string("a\0b", 3));
  EXPECT_EQ(TextOf("@@Invalid()"), "@Invalid()");
  EXPECT_EQ(TextOf("@Other(1)"), "@Other(1)");
}

/// The text that Qt's own reader finds in a file with that raw text.
QString TextForQt(const QByteArray &raw) {
  const QTemporaryDir folder;
  QFile file(folder.filePath("x.ini"));
  EXPECT_TRUE(file.open(QFile::WriteOnly));
  file.write("[General]\nx=" + raw + "\n");
  file.close();
  return QSettings(file.fileName(), QSettings::IniFormat).value("x").toString();
}

/// What Qt's own writer puts down for the text.
QByteArray RawForQt(const QString &text) {
  const QTemporaryDir folder;
  const QString name = folder.filePath("x.ini");
  QSettings(name, QSettings::IniFormat).setValue("x", text);
  return ReadSections(*ContentOfFile(name))["General"]["x"];
}

TEST(RawText, IsOneThatQtWritesAndReads) {
  std::vector<QString> texts = {"",           " ",   "a",   " a",  "a ", "@",  "@@",
                                "@Invalid()", "a,b", "a;b", "a=b", "\"", "\\", "[x]"};
  for (ushort first = 0; first < 256; ++first) {
    for (const char *behind : {"", "1", "g", "f \n"})
      texts.push_back(QChar(first) + QString(behind));
  }
  for (const QString &text : texts) {
    const QByteArray raw = RawText(text);
    EXPECT_EQ(raw, RawForQt(text));
    EXPECT_EQ(TextForQt(raw), text) << raw.toStdString();
    EXPECT_EQ(TextOf(raw), ProgramText(text)) << raw.toStdString();
  }
}

TEST(ReadSections, TakesAllValuesThatCanBeRead) {
  const SettingsSections general = {{"General", {{"a", "1"}, {"b", "2"}}}};
  EXPECT_EQ(ReadSections("[General]\na=1\nb=2\n"), general);
  EXPECT_EQ(ReadSections("a = 1 \n\n;a=3\n[GENERAL]\r\nb=2\r\n"), general);
  EXPECT_EQ(ReadSections("a=0\na=1\ngarbage\n=x\n[broken\nb=2"), general);
  EXPECT_EQ(ReadSections("a=1\n[Hosts]\na=2\n"),
            (SettingsSections{{"General", {{"a", "1"}}}, {"Hosts", {{"a", "2"}}}}));
  EXPECT_EQ(ReadSections(""), SettingsSections());
}

TEST(ReadSections, LosesOneLineToAQuoteThatIsNeverClosed) {
  const SettingsSections sections = ReadSections("a=1\nb=\"x\nc=3\n");
  EXPECT_EQ(sections.at("General").at("a"), "1");
  EXPECT_EQ(sections.at("General").at("c"), "3");
}

TEST(ReadSections, TakesWhatPeopleAndOtherEditorsWrite) {
  const SettingsSections hosts = {{"Hosts", {{"Maker", "192.0.2.10:17650"}}}};
  EXPECT_EQ(ReadSections("\xEF\xBB\xBF[Hosts]\nMaker=192.0.2.10:17650\n"), hosts);
  EXPECT_EQ(ReadSections("[Hosts] ; ours\n  Maker = 192.0.2.10:17650 ; school\n"), hosts);
  EXPECT_EQ(ReadSections("[Hosts]\rMaker=192.0.2.10:17650\r"), hosts);
  EXPECT_EQ(ReadSections("[Hosts]\r\n# Maker=1\r\nMaker=192.0.2.10:17650\r\n"), hosts);

  const SettingsSections general = {{"General", {{"Area", "Utah"}, {"MacID", "123"}}}};
  EXPECT_EQ(ReadSections("  ; a 12\" ruler\nMacID=123\nArea=Utah\n  ; 3\" more\n"), general);
  EXPECT_EQ(ReadSections("; \\\nMacID=123\nArea=Utah;\n"), general);
  EXPECT_EQ(ReadSections("a=\"b;c\"\nd=\\;e\n").at("General"),
            (SettingsSections::mapped_type{{"a", "\"b;c\""}, {"d", "\\;e"}}));
  EXPECT_EQ(ReadSections("a=one,\\\r\n two\nb=\\").at("General"),
            (SettingsSections::mapped_type{{"a", "one,\\\r\n two"}, {"b", ""}}));
}

TEST(ReadSections, IsTheOldReaderToEveryFileThatPeopleWrite) {
  for (const char *content :
       {"[Hosts] ; ours\nMaker=a:1 ; school\n", "\xEF\xBB\xBF[Hosts]\nMaker=a:1\n",
        "  ; 12\" ruler\nMaker=a:1\n  ; 3\" more\n", "Maker = a:1\r\n[Hosts]\r\nMaker=\"b;c\" ; \"\r\n",
        "Maker=one \\\n two\n", "[Hosts]\rMaker=a:1\r", "Maker=\\x41;b\n[ Hosts ]\nMaker=a\n"}) {
    const QTemporaryDir folder;
    QFile file(folder.filePath("x.ini"));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write(content);
    file.close();
    const QSettings old(file.fileName(), QSettings::IniFormat);
    SettingsSections sections = ReadSections(content);
    EXPECT_EQ(TextOf(sections["General"]["Maker"]), ProgramText(old.value("Maker").toString())) << content;
    EXPECT_EQ(TextOf(sections["Hosts"]["Maker"]), ProgramText(old.value("Hosts/Maker").toString())) << content;
  }
}

TEST(ReadSections, LooksAtEachByteOnlyOnce) {
  // A reader that went to the end for every line would need minutes.
  EXPECT_EQ(ReadSections("a=1\n" + QByteArray("\\\n").repeated(5'000'000)).at("General").size(), 1U);
  EXPECT_EQ(ReadSections(QByteArray("\"\n").repeated(5'000'000) + "a=1\n").at("General").size(), 1U);
}

TEST(WriteSections, IsReadAgainAsItWas) {
  const SettingsSections sections = {{"General", {{"a", "1"}, {"b", "\" 2\""}}}, {"Hosts", {{"a", ""}}}};
  EXPECT_EQ(WriteSections(sections), "[General]\na=1\nb=\" 2\"\n\n[Hosts]\na=\n");
  EXPECT_EQ(ReadSections(WriteSections(sections)), sections);
}

class KeepDamagedFile : public testing::Test {
 protected:
  QString file() const { return folder_.filePath("Borvane.conf"); }

  void Write(const QByteArray &content) const {
    QFile out(file());
    ASSERT_TRUE(out.open(QFile::WriteOnly));
    out.write(content);
  }

  void KeepAside() const { EXPECT_TRUE(KeepDamagedFileAside(file(), *ContentOfFile(file()))); }

  QByteArray content(const QString &name) const {
    QFile in(folder_.filePath(name));
    return in.open(QFile::ReadOnly) ? in.readAll() : QByteArray("missing");
  }

  QStringList files() const { return QDir(folder_.path()).entryList(QDir::Files, QDir::Name); }

 private:
  QTemporaryDir folder_;
};

TEST_F(KeepDamagedFile, LeavesAWholeFileAlone) {
  Write("Area=x\n");
  KeepAside();

  EXPECT_EQ(files(), QStringList({"Borvane.conf"}));
}

TEST_F(KeepDamagedFile, KeepsADamagedOneUnderAnotherName) {
  Write("Area=x\ngarbage\n");
  KeepAside();

  EXPECT_EQ(content("Borvane.conf.damaged-1"), "Area=x\ngarbage\n");
  EXPECT_EQ(content("Borvane.conf"), "Area=x\ngarbage\n");
}

TEST_F(KeepDamagedFile, KeepsTheSameDamageOnce) {
  Write("garbage\n");
  KeepAside();
  KeepAside();
  EXPECT_EQ(files().size(), 2);

  Write("other garbage\n");
  KeepAside();

  EXPECT_EQ(files(), QStringList({"Borvane.conf", "Borvane.conf.damaged-1", "Borvane.conf.damaged-2"}));
  EXPECT_EQ(content("Borvane.conf.damaged-2"), "other garbage\n");
}

TEST_F(KeepDamagedFile, DoesNothingWithoutAFile) {
  KeepAside();

  EXPECT_EQ(files(), QStringList());
}

}  // namespace
}  // namespace borvane
