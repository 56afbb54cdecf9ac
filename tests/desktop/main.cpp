#include <QApplication>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "core/registry.h"
#include "desktop/appearance.h"
#include "desktop/services/settings_store.h"

namespace {

/// What Qt complains of is a fault of the program, but for what a screen without a window manager cannot do.
void FailOnWarning(QtMsgType /*type*/, const QMessageLogContext & /*context*/, const QString &message) {
  if (!message.startsWith(QLatin1String("This plugin does not support")))
    ADD_FAILURE() << message.toStdString();
}

/// A second Borvane that writes settings, for the tests of two at once: arguments are the folder, a number of its own
/// and how many values.
int WriteSettings(const char *folder, const std::string &writer, int values) {
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QString::fromLocal8Bit(folder));
  borvane::QtSettingsStore store;
  for (int value = 0; value < values; ++value) {
    const std::string name = "W" + writer + "-" + std::to_string(value);
    store.Write(borvane::Hive::CurrentUser, borvane::program_key, name, "done");
  }
  return 0;
}

}  // namespace

// The windows are real, their screen is not: nothing of these tests shows up on a desktop or depends on one.
int main(int argc, char *argv[]) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  if (argc == 5 && std::string_view(argv[1]) == "--write-settings")
    return WriteSettings(argv[2], argv[3], std::stoi(argv[4]));
  borvane::SetAppearance();

  // Nothing of a test stays behind, also when a program is killed that it has started.
  const QTemporaryDir folder;
  qputenv("TMPDIR", QFile::encodeName(folder.path()));

  // No test comes near the settings of whoever runs it.
  const QTemporaryDir settings;
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
  QSettings::setPath(QSettings::NativeFormat, QSettings::SystemScope, settings.path());

  testing::InitGoogleTest(&argc, argv);
  qInstallMessageHandler(FailOnWarning);
  return RUN_ALL_TESTS();
}
