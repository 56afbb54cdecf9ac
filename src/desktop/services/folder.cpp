#include "desktop/services/folder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
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
void WriteThrough(const QString &folder) {
  const int descriptor = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0)
    return;
  ::fsync(descriptor);
  ::close(descriptor);
}
#else
void WriteThrough(const QString & /*folder*/) {}
#endif

}  // namespace borvane
