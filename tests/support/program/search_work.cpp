#include "support/program/search_work.h"

namespace {

std::size_t bytes_read = 0;

}  // namespace

std::size_t borvane::TakeSearchWork() {
  const std::size_t work = bytes_read;
  bytes_read = 0;
  return work;
}

// Replaces the C library's for this program and the libraries that it loads. It counts, and otherwise does what the
// standard requires; volatile keeps the compiler from turning it into a call of memchr.
extern "C" void *memchr(const void *text, int character, std::size_t length) {
  const volatile unsigned char *bytes = static_cast<const unsigned char *>(text);
  for (std::size_t i = 0; i < length; ++i) {
    if (bytes[i] == static_cast<unsigned char>(character)) {
      bytes_read += i + 1;
      return const_cast<unsigned char *>(bytes + i);
    }
  }
  bytes_read += length;
  return nullptr;
}
