#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "platform/files.h"
#include "support/trace.h"

namespace borvane {

/// Files in memory, in a documents folder "/documents". Every call is in the trace: "folder 5", "exists P",
/// "make-folder P", "state P", "read-file P", "append P text".
class FakeFiles final : public Files {
 public:
  explicit FakeFiles(Trace &trace) : trace_(trace) {}

  // Another program or the user changes files.

  void Put(std::string_view path, std::string_view content);
  void PutFolder(std::string_view path) { folders_.emplace(path); }

  /// Removes a file, or a folder with all that is in it.
  void Remove(std::string_view path);

  /// Writes `text` after the last byte of a file that exists.
  void Extend(std::string_view path, std::string_view text);

  /// Reading fails at this byte of a file that exists, counted from 0.
  void Damage(std::string_view path, std::size_t byte) { files_.find(path)->second.damaged_byte = byte; }

  /// `event` happens in front of the call with that number of those that the trace names `word`: from 1, counted from
  /// now on.
  void BeforeCall(std::string_view word, int number, std::function<void()> event);

  /// The content of a file; nothing when there is no such file.
  std::optional<std::string> ContentOf(std::string_view path) const;
  bool HasFolder(std::string_view path) const { return folders_.contains(path); }

  // From now on.

  void HaveNoSpecialFolders() { has_special_folders_ = false; }

  /// Reading passes on so many bytes at a time.
  void SetPieceSize(std::size_t size) { piece_size_ = size; }

  /// Nothing can be written.
  void RefuseWrites() { takes_writes_ = false; }

  /// The call with that number of those that can fail does so: from 1, counted from now on.
  void FailCall(int number) { calls_until_failure_ = number; }
  bool HasFailed() const { return has_failed_; }

  std::optional<std::string> SpecialFolder(std::int32_t number) override;
  bool Exists(std::string_view path) override;
  void MakeFolder(std::string_view path) override;
  FileState StateOf(std::string_view path) override;
  bool Read(std::string_view path, const std::function<void(std::string_view)> &take) override;
  FileState Append(std::string_view path, std::string_view text) override;

 private:
  struct File {
    std::string content;
    std::uint64_t number = 0;
    std::int64_t changed = 0;
    std::optional<std::size_t> damaged_byte = {};
  };

  void Note(const std::string &word, std::string_view rest);
  bool IsToFail();
  static FileState StateOf(const File &file);

  Trace &trace_;
  std::map<std::string, File, std::less<>> files_;
  std::set<std::string, std::less<>> folders_ = {"/documents"};
  std::map<std::string, int> calls_;
  std::map<std::pair<std::string, int>, std::function<void()>> events_;
  std::size_t piece_size_ = std::numeric_limits<std::size_t>::max();
  bool has_special_folders_ = true;
  bool takes_writes_ = true;
  int calls_until_failure_ = 0;
  bool has_failed_ = false;
  std::int64_t changes_ = 0;
};

}  // namespace borvane
