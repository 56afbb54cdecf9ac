#include "desktop/services/socket_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

namespace borvane {

namespace {

/// Whether the path is a folder of this user's, and no link to one.
bool BelongsToThisUser(const QString &path) {
  const QFileInfo folder(path);
  if (!folder.isDir() || folder.isSymLink())
    return false;
#ifdef Q_OS_UNIX
  return folder.ownerId() == ::geteuid();
#else
  return true;
#endif
}

bool BelongsToThisUserAlone(const QString &path) {
  if (!BelongsToThisUser(path))
    return false;
#ifdef Q_OS_UNIX
  const QFile::Permissions of_others = QFile::WriteGroup | QFile::WriteOther;
  return !(QFile::permissions(path) & of_others);
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
  // The rights of what a link leads to are none of the program's business.
  if (BelongsToThisUser(cache))
    QFile::setPermissions(cache, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  return BelongsToThisUserAlone(cache) ? cache : QString();
}

}  // namespace borvane
