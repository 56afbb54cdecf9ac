#include "desktop/services/files.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <array>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "basic/failure.h"

namespace borvane {

namespace {

using FileStatus = struct stat;

bool IsFolder(const std::string &path) {
  FileStatus status = {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

FileState StateIn(const FileStatus &status) {
  constexpr std::int64_t nanoseconds_per_second = 1'000'000'000;
  return {.device = status.st_dev,
          .number = status.st_ino,
          .size = static_cast<std::uint64_t>(status.st_size),
          .changed = status.st_ctim.tv_sec * nanoseconds_per_second + status.st_ctim.tv_nsec};
}

/// An open regular file. To open anything else fails at once, even a pipe that nobody reads.
class RegularFile {
 public:
  RegularFile(std::string_view path, int flags)
      : descriptor_(::open(std::string(path).c_str(), flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666)) {
    if (!IsOpen())
      return;
    const std::optional<FileStatus> status = Status();
    if (!status || !S_ISREG(status->st_mode))
      Close();
  }
  ~RegularFile() { Close(); }
  RegularFile(const RegularFile &) = delete;
  RegularFile &operator=(const RegularFile &) = delete;

  bool IsOpen() const { return descriptor_ >= 0; }

  /// Nothing when that cannot be found out.
  std::optional<FileStatus> Status() const {
    FileStatus status = {};
    return ::fstat(descriptor_, &status) == 0 ? std::optional(status) : std::nullopt;
  }

  /// The number of bytes read, 0 at the end of the file, less when that fails.
  ssize_t Read(char *bytes, std::size_t count) const { return ::read(descriptor_, bytes, count); }

  /// Writes all of the text after the last byte, or nothing. Returns whether that succeeded.
  bool Append(std::string_view text) const {
    const std::optional<FileStatus> before = Status();
    if (!before)
      return false;
    const std::size_t written = Write(text);
    if (written == text.size())
      return true;
    if (written > 0)
      Undo(before->st_size, written);
    return false;
  }

 private:
  /// Writes the text, in several parts if need be; on a full disk, only its first part. Returns the number of bytes
  /// written.
  std::size_t Write(std::string_view text) const {
    std::size_t written = 0;
    while (written < text.size()) {
      const ssize_t count = ::write(descriptor_, text.data() + written, text.size() - written);
      if (count < 0)
        break;
      written += static_cast<std::size_t>(count);
    }
    return written;
  }

  /// Takes back the bytes that were written after the first `size`: half a line would become the beginning of the next
  /// one. Where another program has written to the file meanwhile, its bytes stay, and so do these.
  void Undo(off_t size, std::size_t written) const {
    const std::optional<FileStatus> now = Status();
    if (!now || now->st_size != size + static_cast<off_t>(written))
      return;
    [[maybe_unused]] const int undone = ::ftruncate(descriptor_, size);
  }

  void Close() {
    if (IsOpen())
      ::close(descriptor_);
    descriptor_ = -1;
  }

  int descriptor_;
};

/// The user's documents folder, where there is one; else the home folder; nothing without a home.
std::optional<std::string> DocumentsFolder() {
  const std::string home = qgetenv("HOME").toStdString();
  if (home.empty())
    return {};

  // Qt converts paths to Unicode and back, which loses bytes that are no UTF-8. So the home's own bytes are put in
  // front of what is below it.
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  const QString converted_home = QDir::homePath();
  const std::string folder = documents.startsWith(converted_home + '/')
                                 ? home + QFile::encodeName(documents.mid(converted_home.size())).toStdString()
                                 : QFile::encodeName(documents).toStdString();
  return IsFolder(folder) ? folder : home;
}

}  // namespace

std::optional<std::string> DesktopFiles::SpecialFolder(std::int32_t number) {
  constexpr std::int32_t documents = 5;
  return number == documents ? DocumentsFolder() : std::nullopt;
}

bool DesktopFiles::Exists(std::string_view path) {
  FileStatus status = {};
  return ::stat(std::string(path).c_str(), &status) == 0;
}

void DesktopFiles::MakeFolder(std::string_view path) {
  if (::mkdir(std::string(path).c_str(), 0777) != 0)
    Fail(Failure::FileAccess);
}

FileState DesktopFiles::StateOf(std::string_view path) {
  const RegularFile file(path, O_RDONLY);
  const std::optional<FileStatus> status = file.IsOpen() ? file.Status() : std::nullopt;
  if (!status)
    Fail(Failure::FileAccess);
  return StateIn(*status);
}

bool DesktopFiles::Read(std::string_view path, const std::function<void(std::string_view)> &take) {
  const RegularFile file(path, O_RDONLY);
  if (!file.IsOpen())
    return false;
  std::array<char, 128 * 1024> piece;  // NOLINT(*-member-init): written before it is read
  ssize_t count = file.Read(piece.data(), piece.size());
  for (; count > 0; count = file.Read(piece.data(), piece.size()))
    take({piece.data(), static_cast<std::size_t>(count)});
  return count == 0;
}

FileState DesktopFiles::Append(std::string_view path, std::string_view text) {
  const RegularFile file(path, O_WRONLY | O_APPEND | O_CREAT);
  if (!file.IsOpen() || !file.Append(text))
    Fail(Failure::FileAccess);
  // The text is in the file. Where its state cannot be found out, the one that is returned is that of no file.
  return StateIn(file.Status().value_or(FileStatus{}));
}

}  // namespace borvane
