#pragma once

#include <QByteArray>
#include <memory>
#include <vector>

#include "http/memory_file.h"

namespace borvane::mirror {

/// The long bodies that were sent last, and their files, each of both with at most 8 MB together. One that is sent
/// again while its page is kept is put into a file in memory: from there each further copy is sent faster than from the
/// body itself.
class RepeatedBodies {
 public:
  /// How many bodies are kept, and how many files there are at any time.
  static constexpr int most = 8;

  /// The file with the bytes of a body that is about to be sent; null when it is sent for the first time, or cannot be
  /// put into a file.
  std::shared_ptr<const MemoryFile> FileOf(const QByteArray &body);

 private:
  struct Entry {
    QByteArray body;  ///< kept, so that its address stays its own
    std::shared_ptr<const MemoryFile> file;
  };

  void MakeRoomFor(const QByteArray &body);
  bool MayMakeAFileOf(qsizetype size);

  std::vector<Entry> entries_;                          ///< the one that was sent last comes first
  std::vector<std::weak_ptr<const MemoryFile>> files_;  ///< also those that only a slow client still needs
};

}  // namespace borvane::mirror
