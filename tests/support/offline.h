#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace borvane {

/// Gives every mirror that this process starts, also through a monitor, a configuration in the folder by which it asks
/// no feed on the Internet. Should a mirror not take notice of it, no request leaves the computer either: nothing
/// listens at the proxy, which is for no address of this computer.
inline void StayOffline(const QString &folder) {
  QFile file(folder + "/mirror.toml");
  if (!file.open(QIODevice::WriteOnly) || file.write("offline = true\n") < 0)
    qFatal("%s cannot be written", qPrintable(file.fileName()));
  qputenv("BORVANE_MIRROR_CONFIG", QFile::encodeName(file.fileName()));
  qputenv("https_proxy", "http://127.0.0.1:9");
}

}  // namespace borvane
