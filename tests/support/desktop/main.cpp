#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QScreen>
#include <QSessionManager>
#include <QTemporaryDir>
#include <QTimer>
#include <QWindow>
#include <cstdio>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "core/program.h"
#include "core/registry.h"
#include "desktop/appearance.h"
#include "desktop/desktop.h"
#include "desktop/services/process.h"
#include "desktop/services/region.h"
#include "desktop/settings/settings_file_store.h"
#include "settings/conffrm.h"
#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"
#include "support/desktop/windows_on_show.h"
#include "support/offline.h"

namespace {

/// What Qt warns of is a fault of the program, but for what a screen without a window manager cannot do.
void FailOnWarning(QtMsgType /*type*/, const QMessageLogContext & /*context*/, const QString &message) {
  if (!message.startsWith(QLatin1String("This plugin does not support")))
    ADD_FAILURE() << message.toStdString();
}

/// Another Borvane that writes settings, for the tests of several at once: arguments are the file, a number of its own,
/// how many values, and how long each waits for the others.
int WriteSettings(const char *file, const std::string &writer, int values, int timeout) {
  borvane::SettingsFileStore store(QString::fromLocal8Bit(file), timeout);
  for (int value = 0; value < values; ++value) {
    const std::string name = "W" + writer + "-" + std::to_string(value);
    store.Write(borvane::program_key, name, "done");
  }
  store.Finish();
  return 0;
}

/// The region is that of the environment at the start of a process: prints its decimal separator.
int PrintDecimalSeparator() {
  borvane::DesktopRegion region;
  std::printf("%c", region.DecimalSeparator());
  return 0;
}

/// A window in the middle of the first screen of those that the environment describes: prints the form's place and the
/// window's, and both again after a user has moved it. Then a bar's, after the last screen has become the first one and
/// changes.
int PrintPlaces() {
  borvane::ScreenRig rig;
  borvane::notice->Show();
  borvane::Settle();
  const borvane::FormWindow &window = rig.window(*borvane::notice);
  const auto print = [&window] {
    std::printf("%g %g %d %d\n", borvane::notice->Left(), borvane::notice->Top(), window.x(), window.y());
  };
  print();
  window.windowHandle()->setFramePosition(QPoint(2000, 100));
  borvane::Settle();
  print();

  borvane::bar_form->Left = 600;
  borvane::bar_form->Top = 300;
  borvane::bar_form->Show();
  borvane::FormWindow &bar = rig.window(*borvane::bar_form);
  QScreen &last = *QGuiApplication::screens().last();
  Q_EMIT qApp->primaryScreenChanged(&last);
  bar.move(70, 80);
  Q_EMIT last.geometryChanged(last.geometry());
  std::printf("%d %d\n", bar.x(), bar.y());
  return 0;
}

/// What the running program is called, in two lines.
int PrintExecutable() {
  borvane::DesktopProcess process([] {}, [] {});
  std::printf("%s\n%s\n", process.Folder().c_str(), process.ExecutableName().c_str());
  return 0;
}

/// The program's own desktop with a window on it, while the session ends: prints whether the program, which starts with
/// the desktop, is to be restored, and for what reason the window is unloaded.
[[noreturn]] void LogOut(char *program_path) {
  borvane::Desktop desktop(program_path);
  const borvane::Program program(desktop.Services(), desktop.Forms());
  borvane::sample->QueryUnload = [](borvane::Integer & /*cancel*/, borvane::UnloadMode mode) {
    std::puts(mode == borvane::UnloadMode::Code ? "unloaded by the program" : "closed");
    std::fflush(stdout);
  };
  borvane::sample->Show();
  borvane::conffrm->Check7.Value = 1;
  // Qt drops a posted one when its loop begins.
  QTimer::singleShot(0, qApp, [] {
    auto &session = *qApp->findChild<QSessionManager *>();
    Q_EMIT qApp->saveStateRequest(session);
    std::puts(session.restartHint() == QSessionManager::RestartNever ? "not restored" : "restored");
    QEvent log_out(QEvent::Quit);
    QCoreApplication::sendEvent(qApp, &log_out);
  });
  desktop.Run();
}

}  // namespace

// The windows are real, their screen is not: nothing of these tests shows up on a desktop or depends on one. With
// --show-windows the system tests see a few of them on a screen with a window manager.
int main(int argc, char *argv[]) {
  const bool shows_windows = argc == 2 && std::string_view(argv[1]) == "--show-windows";
  const bool prints_places = argc == 2 && std::string_view(argv[1]) == "--places";
  if (!shows_windows && !prints_places)
    qputenv("QT_QPA_PLATFORM", "offscreen");
  // No test comes near the settings of whoever runs it.
  const QTemporaryDir settings;
  qputenv("XDG_CONFIG_HOME", QFile::encodeName(settings.path()));
  // Nor does it make a noise.
  qputenv("PULSE_SERVER", "unix:/nonexistent/no-sound");
  if (argc == 2 && std::string_view(argv[1]) == "--log-out")
    LogOut(argv[0]);
  const QApplication application(argc, argv);
  if (argc == 6 && std::string_view(argv[1]) == "--write-settings")
    return WriteSettings(argv[2], argv[3], std::stoi(argv[4]), std::stoi(argv[5]));
  if (argc == 2 && std::string_view(argv[1]) == "--decimal-separator")
    return PrintDecimalSeparator();
  if (argc == 2 && std::string_view(argv[1]) == "--executable")
    return PrintExecutable();
  borvane::SetAppearance();
  if (prints_places)
    return PrintPlaces();
  if (shows_windows)
    return borvane::ShowWindows();

  // Nothing of a test is left over, also when a program is killed that it has started.
  const QTemporaryDir folder;
  qputenv("TMPDIR", QFile::encodeName(folder.path()));
  borvane::StayOffline(folder.path());

  testing::InitGoogleTest(&argc, argv);
  qInstallMessageHandler(FailOnWarning);
  return RUN_ALL_TESTS();
}
