#include "support/fake_files.h"

#include <algorithm>

#include "basic/failure.h"
#include "basic/number.h"

namespace borvane {

namespace {

std::string FolderOf(std::string_view path) { return std::string(path.substr(0, path.rfind('/'))); }

}  // namespace

void FakeFiles::Put(std::string_view path, std::string_view content) {
  ++changes_;
  files_.insert_or_assign(std::string(path),
                          File{std::string(content), static_cast<std::uint64_t>(changes_), changes_});
}

void FakeFiles::Remove(std::string_view path) {
  std::erase_if(files_, [&](const auto &file) { return file.first == path || FolderOf(file.first) == path; });
  folders_.erase(std::string(path));
}

void FakeFiles::Extend(std::string_view path, std::string_view text) {
  File &file = files_.find(path)->second;
  file.content += text;
  file.changed = ++changes_;
}

void FakeFiles::BeforeCall(std::string_view word, int number, std::function<void()> event) {
  const std::string name(word);
  events_[{name, calls_[name] + number}] = std::move(event);
}

std::optional<std::string> FakeFiles::ContentOf(std::string_view path) const {
  const auto file = files_.find(path);
  return file == files_.end() ? std::nullopt : std::optional(file->second.content);
}

void FakeFiles::Note(const std::string &word, std::string_view rest) {
  trace_.Add(word + " " + std::string(rest));
  const auto event = events_.find({word, ++calls_[word]});
  if (event != events_.end())
    event->second();
}

bool FakeFiles::IsToFail() {
  const bool fails = calls_until_failure_ > 0 && --calls_until_failure_ == 0;
  has_failed_ |= fails;
  return fails;
}

FileState FakeFiles::StateOf(const File &file) {
  return {.device = 1, .number = file.number, .size = file.content.size(), .changed = file.changed};
}

std::optional<std::string> FakeFiles::SpecialFolder(std::int32_t number) {
  Note("folder", IntegerText(number));
  return has_special_folders_ ? std::optional<std::string>("/documents") : std::nullopt;
}

bool FakeFiles::Exists(std::string_view path) {
  Note("exists", path);
  return files_.contains(path) || HasFolder(path);
}

void FakeFiles::MakeFolder(std::string_view path) {
  Note("make-folder", path);
  if (IsToFail() || !takes_writes_ || !HasFolder(FolderOf(path)) || files_.contains(path) || HasFolder(path))
    Fail(Failure::FileAccess);
  PutFolder(path);
}

FileState FakeFiles::StateOf(std::string_view path) {
  Note("state", path);
  const auto file = files_.find(path);
  if (IsToFail() || file == files_.end())
    Fail(Failure::FileAccess);
  return StateOf(file->second);
}

bool FakeFiles::Read(std::string_view path, const std::function<void(std::string_view)> &take) {
  Note("read-file", path);
  const auto file = files_.find(path);
  if (IsToFail() || file == files_.end())
    return false;
  const auto &[content, number, changed, damaged_byte] = file->second;
  std::string_view left = std::string_view(content).substr(0, damaged_byte.value_or(content.size()));
  while (!left.empty()) {
    const std::string_view piece = left.substr(0, piece_size_);
    take(piece);
    left.remove_prefix(piece.size());
  }
  return !damaged_byte.has_value();
}

FileState FakeFiles::Append(std::string_view path, std::string_view text) {
  Note("append", std::string(path) + " " + std::string(text));
  if (IsToFail() || !takes_writes_ || !HasFolder(FolderOf(path)) || HasFolder(path))
    Fail(Failure::FileAccess);
  if (!files_.contains(path))
    Put(path, "");
  Extend(path, text);
  return StateOf(files_.find(path)->second);
}

}  // namespace borvane
