#pragma once

#include <QByteArrayView>
#include <QtGlobal>
#include <memory>

namespace borvane::mirror {

/// A file in memory, without a name. The system sends from it without copying the bytes.
class MemoryFile {
 public:
  /// A file with these bytes; null when the system has no such files, or no room for one more.
  static std::shared_ptr<const MemoryFile> With(QByteArrayView bytes);

  ~MemoryFile();
  MemoryFile(const MemoryFile &) = delete;
  MemoryFile &operator=(const MemoryFile &) = delete;

  int descriptor() const { return descriptor_; }

 private:
  explicit MemoryFile(int descriptor) : descriptor_(descriptor) {}

  const int descriptor_;
};

}  // namespace borvane::mirror
