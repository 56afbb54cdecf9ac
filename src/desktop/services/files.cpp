#include "desktop/services/files.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <array>

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
    if (IsOpen() && !S_ISREG(Status().st_mode))
      Close();
  }
  ~RegularFile() { Close(); }
  RegularFile(const RegularFile &) = delete;
  RegularFile &operator=(const RegularFile &) = delete;

  bool IsOpen() const { return descriptor_ >= 0; }

  FileStatus Status() const {
    FileStatus status = {};
    ::fstat(descriptor_, &status);
    return status;
  }

  /// The number of bytes read, 0 at the end of the file, less when that fails.
  ssize_t Read(char *bytes, std::size_t count) const { return ::read(descriptor_, bytes, count); }

  /// Writes all of the text after the last byte, or nothing. Returns whether that succeeded.
  bool Append(std::string_view text) const {
    const off_t size = Status().st_size;
    if (Write(text))
      return true;
    // Half a line would become the beginning of the next one.
    [[maybe_unused]] const int undone = ::ftruncate(descriptor_, size);
    return false;
  }

 private:
  /// Writes the text, in several parts if need be; on a full disk, only its first part.
  bool Write(std::string_view text) const {
    while (!text.empty()) {
      const ssize_t written = ::write(descriptor_, text.data(), text.size());
      if (written < 0)
        return false;
      text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
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
  if (!file.IsOpen())
    Fail(Failure::FileAccess);
  return StateIn(file.Status());
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
  return StateIn(file.Status());
}

}  // namespace borvane
