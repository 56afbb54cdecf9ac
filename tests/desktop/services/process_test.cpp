#include "desktop/services/process.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest/QTest>
#include <functional>

#include <gtest/gtest.h>

#include "desktop/services/message_box.h"
#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {
namespace {

/// Does something with the box that opens next.
void WhenItOpens(const std::function<void(QMessageBox &)> &action) {
  QTimer::singleShot(30, qApp, [action] {
    auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    action(*box);
  });
}

void Press(QMessageBox &box, QMessageBox::StandardButton button) {
  QTest::mouseClick(box.button(button), Qt::LeftButton);
}

MessageAnswer Ask(MessageButtons buttons) {
  return QtMessageBox().Show("Are you sure ?", "Borvane - Quit", buttons, MessageIcon::Question);
}

TEST(QtMessageBox, ShowsTextTitleIconAndButtons) {
  WhenItOpens([](QMessageBox &box) {
    EXPECT_EQ(box.text(), "Are you sure ?");
    EXPECT_EQ(box.windowTitle(), "Borvane - Quit");
    EXPECT_EQ(box.icon(), QMessageBox::Question);
    EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
    Press(box, QMessageBox::No);
  });
  Ask(MessageButtons::YesNo);
}

TEST(QtMessageBox, GivesTheButtonThatWasPressed) {
  WhenItOpens([](QMessageBox &box) { Press(box, QMessageBox::Yes); });
  EXPECT_EQ(Ask(MessageButtons::YesNo), MessageAnswer::Yes);
  WhenItOpens([](QMessageBox &box) { Press(box, QMessageBox::No); });
  EXPECT_EQ(Ask(MessageButtons::YesNo), MessageAnswer::No);
  WhenItOpens([](QMessageBox &box) { Press(box, QMessageBox::Ok); });
  EXPECT_EQ(Ask(MessageButtons::OkCancel), MessageAnswer::Ok);
  WhenItOpens([](QMessageBox &box) { Press(box, QMessageBox::Cancel); });
  EXPECT_EQ(Ask(MessageButtons::OkCancel), MessageAnswer::Cancel);
}

TEST(QtMessageBox, RefusesWhenItIsClosedOrLeftWithEsc) {
  WhenItOpens([](QMessageBox &box) { box.close(); });
  EXPECT_EQ(Ask(MessageButtons::YesNo), MessageAnswer::No);
  WhenItOpens([](QMessageBox &box) { QTest::keyPress(&box, Qt::Key_Escape); });
  EXPECT_EQ(Ask(MessageButtons::YesNo), MessageAnswer::No);
  WhenItOpens([](QMessageBox &box) { QTest::keyPress(&box, Qt::Key_Escape); });
  EXPECT_EQ(Ask(MessageButtons::OkCancel), MessageAnswer::Cancel);
}

TEST(QtMessageBox, LetsEventsRunWhileItAsks) {
  ScreenRig rig;
  int ticks = 0;
  sample->Timer1.Timer = [&] { ++ticks; };
  sample->Timer1.Interval = 5;
  WhenItOpens([&](QMessageBox &box) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks > 3; }, 20'000));
    Press(box, QMessageBox::No);
  });
  Ask(MessageButtons::YesNo);
}

TEST(DesktopProcess, ReportsAnErrorWhenAllElseHasStopped) {
  bool has_stopped = false;
  DesktopProcess process([&] { has_stopped = true; }, [] {});
  WhenItOpens([&](QMessageBox &box) {
    EXPECT_TRUE(has_stopped);
    EXPECT_EQ(box.text(), "Run-time error '6':\n\nOverflow");
    EXPECT_EQ(box.icon(), QMessageBox::Critical);
    Press(box, QMessageBox::Ok);
  });
  process.ReportRuntimeError(6, "Overflow");
  EXPECT_TRUE(has_stopped);
}

TEST(DesktopProcess, ReportsWhatIsNoErrorOfTheProgramsOwn) {
  DesktopProcess process([] {}, [] {});
  WhenItOpens([&](QMessageBox &box) {
    EXPECT_EQ(box.text(), "Unexpected error:\n\nstd::bad_alloc");
    Press(box, QMessageBox::Ok);
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
  EXPECT_TRUE(program.waitForFinished()) << program.errorString().toStdString();
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
