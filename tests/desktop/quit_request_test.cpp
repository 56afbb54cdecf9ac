#include "desktop/quit_request.h"

#include <QApplication>
#include <QByteArrayList>
#include <QEvent>
#include <QProcess>

#include <gtest/gtest.h>

#include "records/frmRecords.h"
#include "settings/conffrm.h"
#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"
#include "support/desktop/timeout.h"

namespace borvane {
namespace {

TEST(QuitRequest, ClearsTheListsThenUnloadsTheWindowsThenEndsTheProcess) {
  ScreenRig rig;
  conffrm->Show();
  frmRecords->Show();
  frmRecords->ListView1.ListItems.Add({"3.1"});
  sample->QueryUnload = [&](Integer & /*cancel*/, UnloadMode mode) {
    rig.note(mode == UnloadMode::Code ? "unload" : "close box");
    rig.note("rows " + std::to_string(frmRecords->ListView1.ListItems.Count()) + " and " +
             std::to_string(frmRecords->ListView2.ListItems.Count()));
  };
  sample->Show();
  Settle();
  rig.events();
  const QuitRequest request;

  QEvent log_out(QEvent::Quit);
  EXPECT_THROW(QCoreApplication::sendEvent(qApp, &log_out), ProcessEnded);

  EXPECT_EQ(rig.events(), Lines({"unload", "rows 0 and 0", "end 0"}));
  EXPECT_EQ(sample.IfLoaded(), nullptr);
  EXPECT_EQ(conffrm.IfLoaded(), nullptr);
  EXPECT_FALSE(rig.window(*frmRecords).isVisible());
}

TEST(QuitRequest, IsNotTheCloseBoxOfAWindow) {
  ScreenRig rig;
  sample->QueryUnload = [&](Integer & /*cancel*/, UnloadMode /*mode*/) { rig.note("asked"); };
  sample->Show();
  Settle();
  rig.events();
  const QuitRequest request;
  rig.window(*sample).close();

  EXPECT_EQ(rig.events(), Lines({"asked"}));
}

TEST(QuitRequest, IsAnsweredByTheDesktopOfTheProgram) {
  QProcess program;
  program.start(QCoreApplication::applicationFilePath(), {"--log-out"});
  ASSERT_TRUE(program.waitForFinished(timeout)) << program.errorString().toStdString();

  EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(program.exitCode(), 0);
  // The first line is about the next start.
  EXPECT_EQ(program.readAllStandardOutput().split('\n').mid(1), QByteArrayList({"unloaded by the program", ""}));
}

}  // namespace
}  // namespace borvane
