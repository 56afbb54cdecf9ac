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
  qsizetype size() const { return size_; }

 private:
  MemoryFile(int descriptor, qsizetype size) : descriptor_(descriptor), size_(size) {}

  const int descriptor_;
  const qsizetype size_;
};

}  // namespace borvane::mirror
