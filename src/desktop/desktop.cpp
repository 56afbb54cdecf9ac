#include "desktop/desktop.h"

#include "desktop/appearance.h"
#include "desktop/held_keys.h"

namespace borvane {

Desktop::Desktop(int &argument_count, char **arguments)
    : application_(argument_count, arguments),
      process_([this] { forms_.Stop(); }),
      quit_request_([this] { process_.End(0); }) {
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
          .process = process_};
}

void Desktop::Run() {
  // The windows come first.
  constexpr int milliseconds_until_the_first_paint = 100;
  QTimer::singleShot(milliseconds_until_the_first_paint, &application_, [this] { StartMirror(); });

  const int status = QApplication::exec();
  process_.End(status);
}

void Desktop::StartMirror() {
  const std::optional<quint16> port = PortOfDefaultHosts();
  if (!port)
    return;
  mirror_starter_ = std::make_unique<MirrorStarter>(
      *port, QApplication::applicationDirPath() + QStringLiteral("/borvane-mirror"), QStringList("--attended"));
  mirror_starter_->Start();
}

}  // namespace borvane
