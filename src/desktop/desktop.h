#pragma once

#include <QApplication>
#include <QByteArray>
#include <array>
#include <memory>

#include "desktop/dark_preference.h"
#include "desktop/quit_request.h"
#include "desktop/screen_system.h"
#include "desktop/services/clock.h"
#include "desktop/services/event_pump.h"
#include "desktop/services/files.h"
#include "desktop/services/http_transfer.h"
#include "desktop/services/message_box.h"
#include "desktop/services/mirror_starter.h"
#include "desktop/services/process.h"
#include "desktop/services/random_source.h"
#include "desktop/services/region.h"
#include "desktop/services/shell.h"
#include "desktop/services/sound.h"
#include "desktop/session_restart.h"
#include "desktop/settings/settings_store.h"
#include "desktop/tray_arrival.h"
#include "desktop/windows/desktop_forms.h"
#include "desktop/windows/tray_icon.h"
#include "platform/platform.h"

namespace borvane {

/// The user's desktop: puts the program's windows on the screen and gives it what it asks of a host.
class Desktop {
 public:
  /// `program_path` is the command by which the program was started. Its options are left out: the program has none,
  /// and Qt would act on its own ones.
  explicit Desktop(char *program_path);

  Platform Services();
  FormHost &Forms() { return forms_; }

  /// Hands the events of the outside world to the program until it ends the process.
  [[noreturn]] void Run();

 private:
  void StartMirror();

  QByteArray screen_option_ = QByteArrayLiteral("-platform");
  QByteArray screen_systems_ = ScreenSystems();
  // Qt keeps references to both.
  int argument_count_;
  std::array<char *, 4> arguments_;
  QApplication application_;
  DesktopForms forms_;
  DesktopSettingsStore settings_;
  DesktopHttpTransfer http_;
  QtEventPump events_;
  SystemClock clock_;
  TwisterRandomSource random_;
  QtMessageBox message_box_;
  DesktopShell shell_;
  DesktopFiles files_;
  DesktopSound sound_;
  DesktopRegion region_;
  DesktopProcess process_;
  QuitRequest quit_request_;
  SessionRestart session_restart_;
  DarkPreference dark_preference_;
  std::unique_ptr<MirrorStarter> mirror_starter_;
  std::unique_ptr<TrayArrival> tray_arrival_;
  std::unique_ptr<TrayIcon> tray_icon_;
};

}  // namespace borvane
