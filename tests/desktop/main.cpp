#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "desktop/appearance.h"

namespace {

/// What Qt complains of is a fault of the program, but for what a screen without a window manager cannot do.
void FailOnWarning(QtMsgType /*type*/, const QMessageLogContext & /*context*/, const QString &message) {
  if (!message.startsWith(QLatin1String("This plugin does not support")))
    ADD_FAILURE() << message.toStdString();
}

}  // namespace

// The windows are real, their screen is not: nothing of these tests shows up on a desktop or depends on one.
int main(int argc, char *argv[]) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  borvane::SetAppearance();

  // No test comes near the settings of whoever runs it.
  const QTemporaryDir settings;
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
  QSettings::setPath(QSettings::NativeFormat, QSettings::SystemScope, settings.path());

  testing::InitGoogleTest(&argc, argv);
  qInstallMessageHandler(FailOnWarning);
  return RUN_ALL_TESTS();
}
