#include "support/desktop/watched_disk.h"

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <regex>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace borvane {

namespace {

thread_local WatchedDisk *watched = nullptr;

/// The disk when it has to do with the path; else nothing.
WatchedDisk *DiskOf(const char *path) { return watched != nullptr && watched->IsWithin(path) ? watched : nullptr; }

/// The path that a descriptor was opened by; empty while no disk is watched.
std::string PathOf(int descriptor) {
  if (watched == nullptr)
    return {};
  char path[4096] = {};
  const ssize_t length = ::readlink(("/proc/self/fd/" + std::to_string(descriptor)).c_str(), path, sizeof path - 1);
  return {path, static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

bool Fails(const char *path, int error, bool is_sync = false) {
  WatchedDisk *disk = DiskOf(path);
  if (disk == nullptr || !disk->Fails(is_sync))
    return false;
  errno = error;
  return true;
}

bool Fails(int descriptor, int error) { return Fails(PathOf(descriptor).c_str(), error); }

bool StateFails(int descriptor) {
  WatchedDisk *disk = DiskOf(PathOf(descriptor).c_str());
  if (disk == nullptr || !disk->StateFails())
    return false;
  errno = EIO;
  return true;
}

void Note(const char *what, const std::string &path, int result) {
  WatchedDisk *disk = DiskOf(path.c_str());
  if (disk != nullptr && result == 0)
    disk->Note(what, path);
}

template <class Function>
Function *Real(const char *name) {
  return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

using OpenFunction = int(const char *, int, ...);

int Open(OpenFunction *real, const char *path, int flags, mode_t mode) {
  return Fails(path, (flags & O_CREAT) != 0 ? ENOSPC : EIO) ? -1 : real(path, flags, mode);
}

}  // namespace

WatchedDisk::WatchedDisk(const QString &folder) : folder_(QFile::encodeName(folder).toStdString() + '/') {
  watched = this;
}

WatchedDisk::~WatchedDisk() { watched = nullptr; }

bool WatchedDisk::Fails(bool is_sync) {
  ++calls_;
  syncs_ += is_sync ? 1 : 0;
  if (fault_ == Fault::kill && calls_ == number_)
    ::raise(SIGKILL);
  const bool fails = (fault_ == Fault::once && calls_ == number_) ||
                     (fault_ == Fault::sync && is_sync && syncs_ == number_) ||
                     (fault_ == Fault::for_good && number_ > 0 && calls_ >= number_);
  has_struck_ |= fails;
  return fails;
}

std::optional<std::size_t> WatchedDisk::Written(std::size_t count) {
  ++writes_;
  if (fault_ == Fault::full && writes_ == number_ + 1) {
    watched = nullptr;
    when_full_();
    watched = this;
    return {};
  }
  const bool is_half = writes_ == number_ && (fault_ == Fault::half || fault_ == Fault::full);
  has_struck_ |= is_half;
  return is_half ? count / 2 : count;
}

bool WatchedDisk::StateFails() {
  const bool fails = fault_ == Fault::state && ++states_ == number_;
  has_struck_ |= fails;
  return fails;
}

void WatchedDisk::Note(const char *what, const std::string &path) {
  // What is only for a moment: locks, and a file's name until it takes another one's place.
  static const std::regex passing(R"(.*(\.writing|(conf|-1)\.[A-Za-z]{6}))");
  if (std::regex_match(path, passing))
    return;
  struct stat state = {};
  const bool is_file =
      std::string_view(what) == "sync" && (::stat(path.c_str(), &state) != 0 || S_ISREG(state.st_mode));
  const std::string name = path.size() < folder_.size() ? "." : path.substr(folder_.size());
  done_.push_back(std::string(what) + ' ' + (is_file ? "content" : name));
}

extern "C" {

int open64(const char *path, int flags, ...) {
  static auto *const real = Real<OpenFunction>("open64");
  va_list more;
  va_start(more, flags);
  const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(more, mode_t) : 0;
  va_end(more);
  return Open(real, path, flags, mode);
}

int open(const char *path, int flags, ...) {
  static auto *const real = Real<OpenFunction>("open");
  va_list more;
  va_start(more, flags);
  const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(more, mode_t) : 0;
  va_end(more);
  return Open(real, path, flags, mode);
}

int fcntl(int descriptor, int command, ...) {
  static auto *const real = Real<int(int, int, ...)>("fcntl");
  va_list more;
  va_start(more, command);
  void *const argument = va_arg(more, void *);
  va_end(more);
  return command == F_OFD_SETLK && Fails(descriptor, ENOLCK) ? -1 : real(descriptor, command, argument);
}

ssize_t read(int descriptor, void *bytes, size_t count) {
  static auto *const real = Real<ssize_t(int, void *, size_t)>("read");
  return Fails(descriptor, EIO) ? -1 : real(descriptor, bytes, count);
}

ssize_t write(int descriptor, const void *bytes, size_t count) {
  static auto *const real = Real<ssize_t(int, const void *, size_t)>("write");
  const std::string path = PathOf(descriptor);
  if (Fails(path.c_str(), ENOSPC))
    return -1;
  WatchedDisk *disk = DiskOf(path.c_str());
  const std::optional<std::size_t> taken = disk == nullptr ? count : disk->Written(count);
  if (taken)
    return real(descriptor, bytes, *taken);
  errno = ENOSPC;
  return -1;
}

int fstat(int descriptor, struct stat *state) noexcept {
  static auto *const real = Real<int(int, struct stat *)>("fstat");
  return StateFails(descriptor) ? -1 : real(descriptor, state);
}

int fstat64(int descriptor, struct stat64 *state) noexcept {
  static auto *const real = Real<int(int, struct stat64 *)>("fstat64");
  return StateFails(descriptor) ? -1 : real(descriptor, state);
}

int fsync(int descriptor) {
  static auto *const real = Real<int(int)>("fsync");
  const std::string path = PathOf(descriptor);
  const int result = Fails(path.c_str(), EIO, true) ? -1 : real(descriptor);
  Note("sync", path, result);
  return result;
}

int fdatasync(int descriptor) {
  static auto *const real = Real<int(int)>("fdatasync");
  const std::string path = PathOf(descriptor);
  const int result = Fails(path.c_str(), EIO, true) ? -1 : real(descriptor);
  Note("sync", path, result);
  return result;
}

int mkdir(const char *path, mode_t mode) noexcept {
  static auto *const real = Real<int(const char *, mode_t)>("mkdir");
  const int result = Fails(path, ENOSPC) ? -1 : real(path, mode);
  Note("make", path, result);
  return result;
}

int linkat(int from_folder, const char *from, int to_folder, const char *to, int flags) noexcept {
  static auto *const real = Real<int(int, const char *, int, const char *, int)>("linkat");
  const int result = Fails(to, ENOSPC) ? -1 : real(from_folder, from, to_folder, to, flags);
  Note("name", to, result);
  return result;
}

int rename(const char *from, const char *to) noexcept {
  static auto *const real = Real<int(const char *, const char *)>("rename");
  const int result = Fails(to, ENOSPC) ? -1 : real(from, to);
  Note("name", to, result);
  return result;
}

int unlink(const char *path) noexcept {
  static auto *const real = Real<int(const char *)>("unlink");
  return Fails(path, EIO) ? -1 : real(path);
}
}

}  // namespace borvane
