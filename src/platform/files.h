#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace borvane {

/// What separates the parts of a path on this system.
#ifdef _WIN32
inline constexpr char path_separator = '\\';
#else
inline constexpr char path_separator = '/';
#endif

/// Identifies the content of a file: when any of these differs, the content may differ.
struct FileState {
  std::uint64_t device = 0;
  std::uint64_t number = 0;  // of the file on its device
  std::uint64_t size = 0;    // in bytes
  std::int64_t changed = 0;  // when content or rights last changed, in nanoseconds

  bool operator==(const FileState &) const = default;
};

/// Files and folders of the user. Paths are the system's own bytes. Where a call cannot do what it is asked for, it
/// raises a file access error.
class Files {
 public:
  /// The folder with that number of the shell, such as 5 for the user's documents; nothing if there is none.
  virtual std::optional<std::string> SpecialFolder(std::int32_t number) = 0;

  /// Whether there is a file or folder; false also when that cannot be found out. Never fails.
  virtual bool Exists(std::string_view path) = 0;

  /// Makes a folder in one that exists.
  virtual void MakeFolder(std::string_view path) = 0;

  /// The state of a regular file.
  virtual FileState StateOf(std::string_view path) = 0;

  /// Passes the bytes of a regular file to `take`, from its start and piece by piece. Returns whether its end was
  /// reached; the pieces in front of a fault have been passed on. Raises nothing.
  virtual bool Read(std::string_view path, const std::function<void(std::string_view)> &take) = 0;

  /// Writes `text` after the last byte of a regular file, which it creates when there is none: all of it or nothing.
  /// Returns the file's state after that.
  virtual FileState Append(std::string_view path, std::string_view text) = 0;

 protected:
  ~Files() = default;
};

}  // namespace borvane
