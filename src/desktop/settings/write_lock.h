#pragma once

#include <QString>

namespace borvane {

/// The right to write a file, held by one Borvane of a user at a time, as long as the object lives. The system releases
/// it when its holder ends, however it ends, so a leftover lock file blocks nobody, whatever its content. The file is
/// never removed: one who waits for the old file and one who creates a new one would both hold the lock.
class WriteLock {
 public:
  /// Waits for the lock, at most `timeout` milliseconds. The one that waits is served before the last holder comes
  /// again.
  WriteLock(const QString &lock_file, int timeout);
  ~WriteLock();
  WriteLock(const WriteLock &) = delete;
  WriteLock &operator=(const WriteLock &) = delete;

  /// False while another holds it. True where the file system has no locks, since nobody can hold one.
  bool IsHeld() const { return is_held_; }

 private:
  int descriptor_;
  bool is_held_;
};

}  // namespace borvane
