#include "program/search_work.h"

namespace {

std::size_t bytes_looked_at = 0;

}  // namespace

std::size_t borvane::TakeSearchWork() {
  const std::size_t work = bytes_looked_at;
  bytes_looked_at = 0;
  return work;
}

// Stands in front of the C library's for this program and the libraries that it loads. It counts, and is otherwise what
// the standard asks; volatile keeps the compiler from making a call of memchr out of it.
extern "C" void *memchr(const void *text, int character, std::size_t length) {
  const volatile unsigned char *bytes = static_cast<const unsigned char *>(text);
  for (std::size_t i = 0; i < length; ++i) {
    if (bytes[i] == static_cast<unsigned char>(character)) {
      bytes_looked_at += i + 1;
      return const_cast<unsigned char *>(bytes + i);
    }
  }
  bytes_looked_at += length;
  return nullptr;
}
