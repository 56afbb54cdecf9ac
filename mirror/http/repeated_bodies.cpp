#include "http/repeated_bodies.h"

#include <algorithm>
#include <numeric>

namespace borvane::mirror {

namespace {

constexpr qsizetype most_bytes = 8 * 1024 * 1024;

}  // namespace

std::shared_ptr<const MemoryFile> RepeatedBodies::FileOf(const QByteArray &body) {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry &entry) { return entry.body.constData() == body.constData(); });
  if (found == entries_.end()) {
    if (body.size() <= most_bytes) {
      MakeRoomFor(body);
      entries_.insert(entries_.begin(), {.body = body, .file = nullptr});
    }
    return nullptr;
  }
  std::rotate(entries_.begin(), found, found + 1);
  Entry &entry = entries_.front();
  if (!entry.file && MayMakeAFileOf(body.size())) {
    entry.file = MemoryFile::With(entry.body);
    files_.push_back(entry.file);
  }
  return entry.file;
}

/// Drops what no one else keeps any more, and then what has not been sent for longest.
void RepeatedBodies::MakeRoomFor(const QByteArray &body) {
  std::erase_if(entries_, [](const Entry &entry) { return entry.body.isDetached(); });
  const auto bytes = [this] {
    return std::accumulate(entries_.begin(), entries_.end(), qsizetype(0),
                           [](qsizetype sum, const Entry &entry) { return sum + entry.body.size(); });
  };
  while (std::ssize(entries_) >= most || bytes() + body.size() > most_bytes)
    entries_.pop_back();
}

/// Each takes one of the files that the program may have open, and memory.
bool RepeatedBodies::MayMakeAFileOf(qsizetype size) {
  std::erase_if(files_, [](const std::weak_ptr<const MemoryFile> &file) { return file.expired(); });
  for (const std::weak_ptr<const MemoryFile> &file : files_)
    size += file.lock()->size();
  return std::ssize(files_) < most && size <= most_bytes;
}

}  // namespace borvane::mirror
