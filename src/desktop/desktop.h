#pragma once

#include <QApplication>
#include <memory>

#include "desktop/quit_request.h"
#include "desktop/services/clock.h"
#include "desktop/services/event_pump.h"
#include "desktop/services/http_transfer.h"
#include "desktop/services/message_box.h"
#include "desktop/services/mirror_starter.h"
#include "desktop/services/process.h"
#include "desktop/services/random_source.h"
#include "desktop/services/settings_store.h"
#include "desktop/services/shell.h"
#include "desktop/windows/desktop_forms.h"
#include "platform/platform.h"

namespace borvane {

/// The user's desktop: puts the program's windows on the screen and gives it what it asks of a host.
class Desktop {
 public:
  Desktop(int &argument_count, char **arguments);

  Platform Services();
  FormHost &Forms() { return forms_; }

  /// Hands the events of the outside world to the program until it ends the process.
  [[noreturn]] void Run();

 private:
  void StartMirror();

  QApplication application_;
  DesktopForms forms_;
  QtSettingsStore settings_;
  CurlTransfer http_;
  QtEventPump events_;
  SystemClock clock_;
  TwisterRandomSource random_;
  QtMessageBox message_box_;
  DesktopShell shell_;
  DesktopProcess process_;
  QuitRequest quit_request_;
  std::unique_ptr<MirrorStarter> mirror_starter_;
};

}  // namespace borvane
