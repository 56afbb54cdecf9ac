// Is loaded before the C library and makes the disk fail, for the files whose path holds BORVANE_FAULT_FILE:
// the call number BORVANE_FAULT_FROM that would write, and all up to number BORVANE_FAULT_TO. A write finds no space,
// what would bring it to the disk finds the device broken. With BORVANE_FAULT_ONLY_SYNC only the latter are counted.
// Each fault is logged on standard error, as is an end of the program that takes its libraries down.

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <dlfcn.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

long Number(const char *variable) {
  const char *text = std::getenv(variable);
  return text == nullptr ? 0 : std::atol(text);
}

bool IsMeant(int descriptor) {
  char path[4096] = {};
  const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
  const char *file = std::getenv("BORVANE_FAULT_FILE");
  return file != nullptr && ::readlink(link.c_str(), path, sizeof path - 1) > 0 && std::strstr(path, file) != nullptr;
}

/// Whether this call has to fail, with `error`.
bool Fails(int descriptor, int error) {
  static std::atomic<long> calls = 0;
  const bool is_sync = error == EIO;
  if (!IsMeant(descriptor) || (!is_sync && std::getenv("BORVANE_FAULT_ONLY_SYNC") != nullptr))
    return false;
  const long call = ++calls;
  if (call < Number("BORVANE_FAULT_FROM") || call > Number("BORVANE_FAULT_TO"))
    return false;
  std::fprintf(stderr, "fault %ld\n", call);
  errno = error;
  return true;
}

template <typename Function>
Function Real(const char *name) {
  return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

[[gnu::destructor]] void LogTheEnd() { std::fprintf(stderr, "taken down\n"); }

}  // namespace

extern "C" {

ssize_t pwrite64(int descriptor, const void *bytes, size_t count, off64_t offset) {
  static const auto real = Real<ssize_t (*)(int, const void *, size_t, off64_t)>("pwrite64");
  return Fails(descriptor, ENOSPC) ? -1 : real(descriptor, bytes, count, offset);
}

ssize_t write(int descriptor, const void *bytes, size_t count) {
  static const auto real = Real<ssize_t (*)(int, const void *, size_t)>("write");
  return Fails(descriptor, ENOSPC) ? -1 : real(descriptor, bytes, count);
}

int ftruncate64(int descriptor, off64_t length) noexcept {
  static const auto real = Real<int (*)(int, off64_t)>("ftruncate64");
  return Fails(descriptor, ENOSPC) ? -1 : real(descriptor, length);
}

int fdatasync(int descriptor) {
  static const auto real = Real<int (*)(int)>("fdatasync");
  return Fails(descriptor, EIO) ? -1 : real(descriptor);
}

int fsync(int descriptor) {
  static const auto real = Real<int (*)(int)>("fsync");
  return Fails(descriptor, EIO) ? -1 : real(descriptor);
}
}
