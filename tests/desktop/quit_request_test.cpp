#include "desktop/quit_request.h"

#include <QApplication>
#include <QEvent>

#include <gtest/gtest.h>

#include "desktop/sample_form.h"
#include "desktop/screen_rig.h"

namespace borvane {
namespace {

TEST(QuitRequest, OfTheDesktopIsGrantedWithoutAskingTheWindows) {
  ScreenRig rig;
  sample->QueryUnload = [&](Integer &cancel, UnloadMode /*mode*/) {
    rig.note("asked");
    cancel = 1;
  };
  sample->Show();
  Settle();
  rig.events();
  const QuitRequest request([&] { rig.note("quit"); });

  QEvent log_out(QEvent::Quit);
  QCoreApplication::sendEvent(qApp, &log_out);

  EXPECT_TRUE(log_out.isAccepted());
  EXPECT_EQ(rig.events(), Lines({"quit"}));
}

TEST(QuitRequest, IsNotTheCloseBoxOfAWindow) {
  ScreenRig rig;
  sample->Show();
  Settle();
  rig.events();
  const QuitRequest request([&] { rig.note("quit"); });
  rig.window(*sample).close();

  EXPECT_EQ(rig.events(), Lines());
}

}  // namespace
}  // namespace borvane
