#include "desktop/services/settings_file.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace borvane {
namespace {

TEST(IsWholeSettingsFile, TakesWhatTheStoreWrites) {
  EXPECT_TRUE(IsWholeSettingsFile(""));
  EXPECT_TRUE(IsWholeSettingsFile("[General]\nArea=Los Angeles\nad=\" 1\"\n\n[Hosts]\nSouthern=127.0.0.1:80\n"));
  EXPECT_TRUE(IsWholeSettingsFile("Text=\"a\\\"b\\\\\"\nEmpty=\nLong=one,\\\n two\n"));
  EXPECT_TRUE(IsWholeSettingsFile("; a \"remark\nArea=x\n"));
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
  EXPECT_FALSE(IsWholeSettingsFile("# remark\nArea=x\n"));
  EXPECT_FALSE(IsWholeSettingsFile("\xEF\xBB\xBF[General]\nArea=x\n"));
}

class KeepDamagedFile : public testing::Test {
 protected:
  QString file() const { return folder_.filePath("Borvane.conf"); }

  void Write(const QByteArray &content) const {
    QFile out(file());
    ASSERT_TRUE(out.open(QFile::WriteOnly));
    out.write(content);
  }

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
  KeepDamagedFileAside(file());

  EXPECT_EQ(files(), QStringList({"Borvane.conf"}));
}

TEST_F(KeepDamagedFile, KeepsADamagedOneUnderAnotherName) {
  Write("Area=x\ngarbage\n");
  KeepDamagedFileAside(file());

  EXPECT_EQ(content("Borvane.conf.damaged-1"), "Area=x\ngarbage\n");
  EXPECT_EQ(content("Borvane.conf"), "Area=x\ngarbage\n");
}

TEST_F(KeepDamagedFile, KeepsTheSameDamageOnce) {
  Write("garbage\n");
  KeepDamagedFileAside(file());
  KeepDamagedFileAside(file());
  EXPECT_EQ(files().size(), 2);

  Write("other garbage\n");
  KeepDamagedFileAside(file());

  EXPECT_EQ(files(), QStringList({"Borvane.conf", "Borvane.conf.damaged-1", "Borvane.conf.damaged-2"}));
  EXPECT_EQ(content("Borvane.conf.damaged-2"), "other garbage\n");
}

TEST_F(KeepDamagedFile, DoesNothingWithoutAFile) {
  KeepDamagedFileAside(file());

  EXPECT_EQ(files(), QStringList());
}

}  // namespace
}  // namespace borvane
