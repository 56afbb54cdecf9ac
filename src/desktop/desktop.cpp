#include "desktop/desktop.h"

#include <QStandardPaths>
#include <csignal>
#include <cstdio>

#include "desktop/appearance.h"
#include "desktop/held_keys.h"
#include "desktop/services/socket_folder.h"
#include "feed/hosts.h"

namespace borvane {

namespace {

/// Writes a line to standard error.
void Log(const QString &text) { std::fprintf(stderr, "borvane: %s\n", qPrintable(text)); }

}  // namespace

Desktop::Desktop(char *program_path)
    : argument_count_(screen_systems_.isEmpty() ? 1 : 3),
      arguments_{program_path, screen_option_.data(), screen_systems_.data(), nullptr},
      application_(argument_count_, arguments_.data()),
      process_(
          [this] {
            forms_.Stop();
            settings_.WriteKept();
          },
          [this] { settings_.Finish(); }),
      dark_preference_(PreferDark) {
#ifdef SIGXFSZ
  // A write beyond the user's limit for the size of a file fails like one to a full disk.
  std::signal(SIGXFSZ, SIG_IGN);
#endif
  // A hidden records window with no bar leaves the program running.
  QApplication::setQuitOnLastWindowClosed(false);
  SetAppearance();
  CountHeldKeysOnce();
}

Platform Desktop::Services() {
  return {.settings = settings_,
          .http = http_,
          .events = events_,
          .clock = clock_,
          .random = random_,
          .message_box = message_box_,
          .shell = shell_,
          .files = files_,
          .sound = sound_,
          .region = region_,
          .process = process_};
}

void Desktop::Run() {
  settings_.EndStart();

  // The windows come first.
  constexpr int milliseconds_until_the_first_paint = 100;
  QTimer::singleShot(milliseconds_until_the_first_paint, &application_, [this] {
    StartMirror();
    tray_arrival_ = std::make_unique<TrayArrival>([this] { tray_icon_ = std::make_unique<TrayIcon>(forms_); });
  });

  const int status = QApplication::exec();
  process_.End(status);
}

void Desktop::StartMirror() {
  if (!UsesMirror())
    return;
  const QString socket_folder = SocketFolder();
  if (socket_folder.isEmpty()) {
    Log("no data source: neither XDG_RUNTIME_DIR nor " +
        QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
        "/borvane is a folder of this user's own");
    return;
  }
  mirror_starter_ =
      std::make_unique<MirrorStarter>(MirrorPlace{.port = mirror_port,
                                                  .executable = QApplication::applicationDirPath() + "/borvane-mirror",
                                                  .socket_folder = socket_folder},
                                      Log);
  mirror_starter_->Start();
}

}  // namespace borvane
