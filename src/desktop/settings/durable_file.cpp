#include "desktop/settings/durable_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#ifdef Q_OS_UNIX
#include <cerrno>

#include <fcntl.h>
#include <unistd.h>
#endif

namespace borvane {

namespace {

#ifdef Q_OS_UNIX
bool SyncFile(QFileDevice &file) {
  if (!file.flush())
    return false;
  while (::fsync(file.handle()) != 0) {
    // A file system that cannot sync reports EINVAL.
    if (errno != EINTR)
      return errno == EINVAL;
  }
  return true;
}

/// Syncs the names in a folder: to sync a file covers its content only.
void SyncFolder(const QString &folder) {
  const int descriptor = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0)
    return;
  ::fsync(descriptor);
  ::close(descriptor);
}
#else
bool SyncFile(QFileDevice &file) { return file.flush(); }

void SyncFolder(const QString & /*folder*/) {}
#endif

}  // namespace

void MakeFolder(const QString &folder) {
  if (QFileInfo::exists(folder))
    return;
  const QString above = QFileInfo(folder).path();
  if (above == folder)
    return;
  MakeFolder(above);
  QDir().mkdir(folder);
  SyncFolder(above);
}

std::optional<QByteArray> ContentOfFile(const QString &name) {
  QFile file(name);
  if (!file.open(QFile::ReadOnly))
    return QFileInfo::exists(name) ? std::nullopt : std::optional(QByteArray());
  QByteArray content = file.readAll();
  if (file.error() != QFile::NoError)
    return {};
  return content;
}

bool WriteFileDurably(const QString &name, const QByteArray &content, const QString &like) {
  QSaveFile file(name);
  if (!file.open(QFile::WriteOnly))
    return false;
  if (QFile::exists(like))
    file.setPermissions(QFile::permissions(like));
  // commit() ignores a failed sync: the old file would be replaced by one whose bytes never reached the disk.
  if (file.write(content) != content.size() || !SyncFile(file) || !file.commit())
    return false;
  SyncFolder(QFileInfo(name).path());
  return true;
}

void DeleteFileDurably(const QString &name) {
  if (QFile::remove(name))
    SyncFolder(QFileInfo(name).path());
}

}  // namespace borvane
