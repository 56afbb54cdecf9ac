#include "desktop/services/process.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <cstdio>

#include <gtest/gtest.h>

#include "support/desktop/next_message_box.h"

namespace borvane {
namespace {

TEST(DesktopProcess, ReportsAnErrorWhenAllElseHasStopped) {
  bool has_stopped = false;
  DesktopProcess process([&] { has_stopped = true; }, [] {});
  const NextMessageBox message([&](QMessageBox &box) {
    EXPECT_TRUE(has_stopped);
    EXPECT_EQ(box.text(), "Run-time error '6':\n\nOverflow");
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
    box.button(QMessageBox::Ok)->click();
  });
  process.ReportRuntimeError(6, "Overflow");
  EXPECT_TRUE(has_stopped);
}

TEST(DesktopProcess, ReportsWhatIsNoErrorOfTheProgramsOwn) {
  DesktopProcess process([] {}, [] {});
  const NextMessageBox message([](QMessageBox &box) {
    EXPECT_EQ(box.text(), "Unexpected error:\n\nstd::bad_alloc");
    box.button(QMessageBox::Ok)->click();
  });
  process.ReportRuntimeError(0, "std::bad_alloc");
}

TEST(DesktopProcessDeathTest, FinishesBeforeItEnds) {
  const auto finish = [] { std::fputs("finished", stderr); };
  EXPECT_EXIT(DesktopProcess([] {}, finish).End(3), testing::ExitedWithCode(3), "^finished$");
}

TEST(DesktopProcessDeathTest, EndsWithItsStatusAndWithoutCleaningUp) {
  struct Loud {
    ~Loud() { std::fputs("cleaned up", stderr); }
  } loud;
  EXPECT_EXIT(DesktopProcess([] {}, [] {}).End(3), testing::ExitedWithCode(3), "^$");
}

/// What a program of that file reports: its folder and its name, a line each.
QByteArray ReportedBy(const QString &file) {
  QProcess program;
  program.start(file, {"--executable"});
  EXPECT_TRUE(program.waitForFinished(60'000)) << program.errorString().toStdString();
  return program.readAllStandardOutput();
}

TEST(DesktopProcess, KnowsItsFolderAndItsExecutable) {
  const QTemporaryDir folder;
  const QString path = QFileInfo(folder.path()).canonicalFilePath() + QString::fromUtf8("/a b.c \u00E9");
  ASSERT_TRUE(QDir().mkdir(path));
  for (const char *name : {"borvane", "borvane-2.3.5", "borvane.old", "two words", ".hidden"}) {
    const QString file = path + '/' + name;
    ASSERT_TRUE(QFile::copy(QCoreApplication::applicationFilePath(), file));
    EXPECT_EQ(ReportedBy(file), QFile::encodeName(path) + '\n' + name + '\n');
    QFile::remove(file);
  }
}

}  // namespace
}  // namespace borvane
