#pragma once

#include <QString>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace borvane::mirror {

/// The name of the local socket at which a mirror that was started with --attended, and listens at `port`, counts the
/// monitors that use it. A monitor holds a connection to it for as long as it runs and sends nothing; the connection
/// ends with the monitor, however that ends. The mirror ends two seconds after the last one has gone, and ten seconds
/// after its start when none came. A mirror that was started without the option has no such socket, and needs none.
inline QString AttendanceSocketName(quint16 port) {
#ifdef Q_OS_UNIX
  const QString user = QString::number(::getuid());
#else
  const QString user = qEnvironmentVariable("USERNAME");
#endif
  return QString("borvane-mirror-%1-%2").arg(user).arg(port);
}

}  // namespace borvane::mirror
