#include "desktop/settings/write_lock.h"

#include <QtGlobal>

#ifndef Q_OS_WIN

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace borvane {

namespace {

// The lock file's first byte is locked by the holder, its second by the one that is next. Without the second, a holder
// that writes value after value takes the lock again before those that poll for it wake up.
enum Byte : off_t { Holder, Next };

/// Whether the byte is now of that lock type. True also where no lock can be had.
bool SetLock(int descriptor, Byte byte, short type) {
  struct flock lock = {};
  lock.l_type = type;
  lock.l_whence = SEEK_SET;
  lock.l_start = byte;
  lock.l_len = 1;
  return ::fcntl(descriptor, F_OFD_SETLK, &lock) == 0 || (errno != EAGAIN && errno != EACCES);
}

bool WaitFor(int descriptor, Byte byte, const QDeadlineTimer &deadline) {
  constexpr int pause = 2;  // milliseconds
  while (!SetLock(descriptor, byte, F_WRLCK)) {
    if (deadline.hasExpired())
      return false;
    QThread::msleep(pause);
  }
  return true;
}

}  // namespace

WriteLock::WriteLock(const QString &lock_file, int timeout)
    : descriptor_(::open(QFile::encodeName(lock_file).constData(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR)) {
  const QDeadlineTimer deadline(timeout);
  is_held_ = WaitFor(descriptor_, Next, deadline) && WaitFor(descriptor_, Holder, deadline);
  SetLock(descriptor_, Next, F_UNLCK);
}

WriteLock::~WriteLock() {
  if (descriptor_ >= 0)
    ::close(descriptor_);
}

}  // namespace borvane

#endif
