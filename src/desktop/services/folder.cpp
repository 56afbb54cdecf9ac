#include "desktop/services/folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <cerrno>

#include <fcntl.h>
#include <unistd.h>
#endif

namespace borvane {

void MakeFolder(const QString &folder) {
  if (QFileInfo::exists(folder))
    return;
  const QString above = QFileInfo(folder).path();
  if (above == folder)
    return;
  MakeFolder(above);
  QDir().mkdir(folder);
  WriteThrough(above);
}

#ifdef Q_OS_UNIX
bool WriteThrough(QFileDevice &file) {
  if (!file.flush())
    return false;
  while (::fsync(file.handle()) != 0) {
    // A file system that knows no such thing says so with EINVAL.
    if (errno != EINTR)
      return errno == EINVAL;
  }
  return true;
}

void WriteThrough(const QString &folder) {
  const int descriptor = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0)
    return;
  ::fsync(descriptor);
  ::close(descriptor);
}
#else
bool WriteThrough(QFileDevice &file) { return file.flush(); }

void WriteThrough(const QString & /*folder*/) {}
#endif

}  // namespace borvane
