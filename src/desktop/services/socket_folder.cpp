#include "desktop/services/socket_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace borvane {

namespace {

bool BelongsToThisUserAlone(const QString &path) {
  const QFileInfo folder(path);
  if (!folder.isDir() || folder.isSymLink())
    return false;
#ifdef Q_OS_UNIX
  const QFile::Permissions of_others = QFile::WriteGroup | QFile::WriteOther;
  return folder.ownerId() == ::geteuid() && !(folder.permissions() & of_others);
#else
  return true;
#endif
}

}  // namespace

QString SocketFolder() {
  QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
  if (BelongsToThisUserAlone(runtime))
    return runtime;
  const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + "/borvane";
  QDir().mkpath(cache);
  QFile::setPermissions(cache, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  return BelongsToThisUserAlone(cache) ? cache : QString();
}

}  // namespace borvane
