#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace borvane {

/// Gives every mirror that this process starts, also through a monitor, a configuration in the folder by which it asks
/// no feed on the Internet.
inline void StayOffline(const QString &folder) {
  QFile file(folder + "/mirror.toml");
  if (!file.open(QIODevice::WriteOnly) || file.write("offline = true\n") < 0)
    qFatal("%s cannot be written", qPrintable(file.fileName()));
  qputenv("BORVANE_MIRROR_CONFIG", QFile::encodeName(file.fileName()));
}

}  // namespace borvane
