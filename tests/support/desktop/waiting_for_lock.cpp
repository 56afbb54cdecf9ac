#include "support/desktop/waiting_for_lock.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>

#include <fcntl.h>
#include <unistd.h>

namespace borvane {

namespace {

/// Whether the lock file's second byte is locked, which is the one that is next.
bool IsAnybodyNext(const QString &lock_file) {
  struct flock next = {};
  next.l_type = F_WRLCK;
  next.l_whence = SEEK_SET;
  next.l_start = 1;
  next.l_len = 1;
  const int descriptor = ::open(QFile::encodeName(lock_file).constData(), O_RDWR | O_CLOEXEC);
  const bool is_known = ::fcntl(descriptor, F_OFD_GETLK, &next) == 0;
  ::close(descriptor);
  return is_known && next.l_type != F_UNLCK;
}

}  // namespace

bool AwaitWaiting(const QString &lock_file) {
  const QDeadlineTimer deadline(60'000);
  while (!IsAnybodyNext(lock_file)) {
    if (deadline.hasExpired())
      return false;
    QThread::msleep(1);
  }
  return true;
}

}  // namespace borvane
