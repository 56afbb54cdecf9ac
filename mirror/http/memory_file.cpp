#include "http/memory_file.h"

#ifdef Q_OS_LINUX
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace borvane::mirror {

#ifdef Q_OS_LINUX

std::shared_ptr<const MemoryFile> MemoryFile::With(QByteArrayView bytes) {
  const int descriptor = ::memfd_create("borvane-page", MFD_CLOEXEC);
  if (descriptor < 0)
    return nullptr;
  std::shared_ptr<const MemoryFile> file(new MemoryFile(descriptor, bytes.size()));
  for (QByteArrayView rest = bytes; !rest.isEmpty();) {
    const auto count = ::write(descriptor, rest.data(), static_cast<std::size_t>(rest.size()));
    if (count <= 0)
      return nullptr;
    rest = rest.sliced(count);
  }
  return file;
}

MemoryFile::~MemoryFile() { ::close(descriptor_); }

#else

std::shared_ptr<const MemoryFile> MemoryFile::With(QByteArrayView /*bytes*/) { return nullptr; }

MemoryFile::~MemoryFile() = default;

#endif

}  // namespace borvane::mirror
