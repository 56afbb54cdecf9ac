#pragma once

#include <optional>
#include <string>
#include <vector>

#include "alert/log_lines.h"
#include "platform/files.h"

namespace borvane {

/// The log, for a series of lines that are looked up and appended. It is read once for all of them, and again when
/// another program has changed it in between, so that the outcome is that of reading it for each line. All raise a file
/// access error where the file cannot be read or written.
class LogFile {
 public:
  /// `lines` are those that will be looked up. Refers to all three, which have to outlive this.
  LogFile(Files &files, const std::string &path, const std::vector<std::string> &lines);

  /// Creates the file, empty, when there is none.
  void Ensure();

  /// Whether the file has exactly this line. The bytes after the last line end are a line, too.
  bool Contains(const std::string &line);

  /// Writes the line and a line end after the last byte of the file. Only after a Contains that has just returned
  /// false.
  void Append(const std::string &line);

 private:
  void Update();

  Files &files_;
  const std::string &path_;
  LogLines lines_;
  std::optional<FileState> state_;  ///< of the file as `lines_` has taken it, to its end
};

}  // namespace borvane
