#include "desktop/session_restart.h"

#include <QApplication>
#include <QProcess>
#include <QSessionManager>

#include <gtest/gtest.h>

#include "settings/conffrm.h"
#include "support/desktop/screen_rig.h"
#include "support/desktop/timeout.h"

namespace borvane {
namespace {

/// What the program answers a desktop that saves what is running.
QSessionManager::RestartHint Answer() {
  auto &session = *qApp->findChild<QSessionManager *>();
  session.setRestartHint(QSessionManager::RestartAnyway);
  Q_EMIT qApp->saveStateRequest(session);
  return session.restartHint();
}

TEST(SessionRestart, IsRefusedWhileTheProgramStartsWithTheDesktop) {
  const ScreenRig rig;
  const SessionRestart restart;
  conffrm->Check7.Value = 1;
  EXPECT_EQ(Answer(), QSessionManager::RestartNever);

  conffrm->Check7.Value = 0;
  EXPECT_EQ(Answer(), QSessionManager::RestartIfRunning);
}

TEST(SessionRestart, LoadsNoSettings) {
  const ScreenRig rig;
  const SessionRestart restart;

  EXPECT_EQ(Answer(), QSessionManager::RestartIfRunning);
  EXPECT_EQ(conffrm.IfLoaded(), nullptr);
}

TEST(SessionRestart, IsAnsweredByTheDesktopOfTheProgram) {
  QProcess program;
  program.start(QCoreApplication::applicationFilePath(), {"--log-out"});
  ASSERT_TRUE(program.waitForFinished(timeout)) << program.errorString().toStdString();

  EXPECT_EQ(program.readAllStandardOutput().split('\n').value(0), "not restored");
}

}  // namespace
}  // namespace borvane
