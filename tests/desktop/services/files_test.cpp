#include "desktop/services/files.h"

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>
#include <csignal>
#include <filesystem>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/desktop/variable.h"
#include "support/desktop/watched_disk.h"
#include "support/failure_of.h"

namespace borvane {
namespace {

/// No file grows beyond so many bytes as long as it lives: a write stops there, and the next one fails, as on a full
/// disk. The program ignores the signal that comes with it from its start on.
class SmallDisk {
 public:
  explicit SmallDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit = {bytes, before_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~SmallDisk() {
    ::setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  SmallDisk(const SmallDisk &) = delete;
  SmallDisk &operator=(const SmallDisk &) = delete;

 private:
  rlimit before_ = {};
  void (*handler_)(int);
};

/// A folder of its own, whose name has bytes that are no UTF-8.
struct DesktopFilesTest : testing::Test {
  DesktopFilesTest() {
    files.MakeFolder(folder);
    files.MakeFolder(configuration);
  }
  // Qt cannot remove a folder of that name.
  ~DesktopFilesTest() override { std::filesystem::remove_all(folder); }

  void Write(const std::string &name, std::string_view content) {
    const int descriptor = ::open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    EXPECT_EQ(::write(descriptor, content.data(), content.size()), static_cast<ssize_t>(content.size()));
    ::close(descriptor);
  }

  /// What can be read of the file; with "!" where its end is not reached.
  std::string Content(const std::string &name) {
    std::string content;
    return files.Read(name, [&](std::string_view piece) { content += piece; }) ? content : content + "!";
  }

  /// The documents folder for that home.
  std::optional<std::string> Documents(const char *home) {
    const Variable home_variable("HOME", home == nullptr ? std::nullopt : std::optional<QByteArray>(home));
    const Variable configuration_variable("XDG_CONFIG_HOME", QByteArray::fromStdString(configuration));
    return files.SpecialFolder(5);
  }

  QTemporaryDir place;
  DesktopFiles files;
  std::string folder = QFile::encodeName(place.path()).toStdString() + "/h\xFF\xE9 #%";
  std::string configuration = folder + "/c";
  std::string path = folder + "/quakes.log";
};

// Folders.

TEST_F(DesktopFilesTest, GiveTheHomeWithoutADocumentsFolder) { EXPECT_EQ(Documents(folder.c_str()), folder); }

TEST_F(DesktopFilesTest, GiveTheDocumentsFolderWhereThereIsOne) {
  files.MakeFolder(folder + "/Documents");
  EXPECT_EQ(Documents(folder.c_str()), folder + "/Documents");
}

TEST_F(DesktopFilesTest, GiveTheDocumentsFolderUnderTheUsersOwnName) {
  files.MakeFolder(folder + "/Documents");
  files.MakeFolder(folder + "/Papiers \xC3\xA9");
  const std::string readable = QFile::encodeName(place.path()).toStdString() + "/config";
  files.MakeFolder(readable);
  configuration = readable;
  Write(readable + "/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Papiers \xC3\xA9\"\n");
  EXPECT_EQ(Documents(folder.c_str()), folder + "/Papiers \xC3\xA9");
  const std::string elsewhere = QFile::encodeName(place.path()).toStdString() + "/elsewhere";
  files.MakeFolder(elsewhere);
  Write(readable + "/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"" + elsewhere + "\"\n");
  EXPECT_EQ(Documents(folder.c_str()), elsewhere);
}

TEST_F(DesktopFilesTest, GiveTheHomeWhereTheDocumentsFolderIsAFile) {
  Write(folder + "/Documents", "");
  EXPECT_EQ(Documents(folder.c_str()), folder);
}

TEST_F(DesktopFilesTest, KnowNoFolderWithoutAHomeAndNoOtherFolder) {
  EXPECT_EQ(Documents(nullptr), std::nullopt);
  EXPECT_EQ(Documents(""), std::nullopt);
  const Variable home("HOME", QByteArray::fromStdString(folder));
  EXPECT_EQ(files.SpecialFolder(6), std::nullopt);
}

TEST_F(DesktopFilesTest, SeeFilesAndFolders) {
  Write(path, "");
  EXPECT_TRUE(files.Exists(path));
  EXPECT_TRUE(files.Exists(folder));
  EXPECT_FALSE(files.Exists(folder + "/other"));
  EXPECT_FALSE(files.Exists(path + "/below a file"));
  EXPECT_FALSE(files.Exists(""));
}

TEST_F(DesktopFilesTest, MakeOneLevelOfFolders) {
  files.MakeFolder(folder + "/one");
  EXPECT_TRUE(files.Exists(folder + "/one"));
  EXPECT_EQ(FailureOf([&] { files.MakeFolder(folder + "/one"); }), file_access);
  EXPECT_EQ(FailureOf([&] { files.MakeFolder(folder + "/two/three"); }), file_access);
  EXPECT_FALSE(files.Exists(folder + "/two"));
}

// Files.

TEST_F(DesktopFilesTest, AppendAfterTheLastByteAndReadEveryByte) {
  using namespace std::string_literals;
  files.Append(path, "");
  EXPECT_EQ(Content(path), "");
  files.Append(path, "a\0\x1A\xFF"s);
  files.Append(path, "b\r\n");
  EXPECT_EQ(Content(path),
            "a\0\x1A\xFF"
            "b\r\n"s);
}

TEST_F(DesktopFilesTest, ReadAFileOfManyPieces) {
  std::string content;
  for (int i = 0; content.size() < 1'000'000; ++i)
    content += std::to_string(i);
  Write(path, content);
  std::vector<std::size_t> pieces;
  std::string read;
  EXPECT_TRUE(files.Read(path, [&](std::string_view piece) { pieces.push_back(piece.size()), read += piece; }));
  EXPECT_EQ(read, content);
  EXPECT_GT(pieces.size(), 1u);
}

TEST_F(DesktopFilesTest, GiveAnotherStateAfterEveryChange) {
  const FileState first = files.Append(path, "abc");
  EXPECT_EQ(first.size, 3u);
  EXPECT_EQ(files.StateOf(path), first);
  EXPECT_EQ(files.StateOf(path), first) << "looking changes nothing";

  Write(path + "2", "abc");
  ASSERT_EQ(::rename((path + "2").c_str(), path.c_str()), 0);
  const FileState replaced = files.StateOf(path);
  EXPECT_NE(replaced, first);

  // The file system's clock may stand still for some milliseconds.
  FileState rewritten = replaced;
  for (int attempt = 0; attempt < 5000 && rewritten == replaced; ++attempt) {
    Write(path, "xyz");
    rewritten = files.StateOf(path);
    ::usleep(1000);
  }
  EXPECT_NE(rewritten, replaced) << "other content of the same size";

  const FileState longer = files.Append(path, "d");
  EXPECT_EQ(longer.size, rewritten.size + 1);
  EXPECT_EQ(longer.number, rewritten.number);
  EXPECT_EQ(longer.device, rewritten.device);
}

// Faults.

/// Whether everything that can be done with a file fails at that path.
bool FailsThere(DesktopFiles &files, const std::string &path) {
  int pieces = 0;
  const bool was_read = files.Read(path, [&](std::string_view) { ++pieces; });
  return !was_read && pieces == 0 && FailureOf([&] { files.StateOf(path); }) == file_access &&
         FailureOf([&] { files.Append(path, "a"); }) == file_access;
}

TEST_F(DesktopFilesTest, FailWhereThereIsAFolder) { EXPECT_TRUE(FailsThere(files, folder)); }

TEST_F(DesktopFilesTest, FailBelowAFile) {
  Write(path, "");
  EXPECT_TRUE(FailsThere(files, path + "/quakes.log"));
}

TEST_F(DesktopFilesTest, FailAtOnceAtAPipe) {
  ASSERT_EQ(::mkfifo(path.c_str(), 0666), 0);
  EXPECT_TRUE(FailsThere(files, path)) << "nobody at the other end";
  const int other_end = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
  EXPECT_TRUE(FailsThere(files, path));
  ::close(other_end);
}

TEST_F(DesktopFilesTest, FailAtADevice) {
  for (const char *device : {"/dev/null", "/dev/zero", "/dev/full"})
    ASSERT_TRUE(FailsThere(files, device)) << device;
}

TEST_F(DesktopFilesTest, FailWhereThereIsNothing) {
  EXPECT_EQ(Content(path), "!");
  EXPECT_EQ(FailureOf([&] { files.StateOf(path); }), file_access);
  EXPECT_FALSE(files.Exists(path));
  EXPECT_EQ(FailureOf([&] { files.Append(folder + "/none/quakes.log", "a"); }), file_access);
}

TEST_F(DesktopFilesTest, AppendNothingWhereNotAllOfItFits) {
  files.Append(path, "before\r\n");
  {
    const SmallDisk disk(12);
    EXPECT_EQ(FailureOf([&] { files.Append(path, "2.0 a b\r\n"); }), file_access);
  }
  EXPECT_EQ(Content(path), "before\r\n");
  files.Append(path, "2.0 a b\r\n");
  EXPECT_EQ(Content(path), "before\r\n2.0 a b\r\n");
}

TEST_F(DesktopFilesTest, WriteTheRestOfAWriteThatWasCutShort) {
  files.Append(path, "before\r\n");
  WatchedDisk disk(place.path());
  disk.Break(WatchedDisk::Fault::half, 1);
  files.Append(path, "2.0 a b\r\n");
  EXPECT_TRUE(disk.HasStruck());
  EXPECT_EQ(Content(path), "before\r\n2.0 a b\r\n");
}

TEST_F(DesktopFilesTest, LeaveWhatAnotherProgramAppendsWhileAWriteIsCutShort) {
  files.Append(path, "before\r\n");
  WatchedDisk disk(place.path());
  disk.Break(WatchedDisk::Fault::full, 1);
  disk.WhenFull([this] { files.Append(path, "theirs\r\n"); });
  EXPECT_EQ(FailureOf([&] { files.Append(path, "2.0 a b\r\n"); }), file_access);
  EXPECT_TRUE(disk.HasStruck());
  EXPECT_EQ(Content(path), "before\r\n2.0 theirs\r\n");
}

TEST_F(DesktopFilesTest, LeaveAFileThatAnotherProgramMakesEmptyWhileAWriteIsCutShort) {
  files.Append(path, "before\r\n");
  WatchedDisk disk(place.path());
  disk.Break(WatchedDisk::Fault::full, 1);
  disk.WhenFull([this] { Write(path, ""); });
  EXPECT_EQ(FailureOf([&] { files.Append(path, "2.0 a b\r\n"); }), file_access);
  EXPECT_EQ(Content(path), "");
}

TEST_F(DesktopFilesTest, LeaveWhatAnotherProgramAppendsWhereNothingFits) {
  files.Append(path, "before\r\n");
  WatchedDisk disk(place.path());
  disk.Break(WatchedDisk::Fault::full, 0);
  disk.WhenFull([this] { files.Append(path, "theirs\r\n"); });
  EXPECT_EQ(FailureOf([&] { files.Append(path, "2.0 a b\r\n"); }), file_access);
  EXPECT_EQ(Content(path), "before\r\ntheirs\r\n");
}

TEST_F(DesktopFilesTest, KeepEveryByteWhereTheStateOfAFileCannotBeFoundOut) {
  files.Append(path, "before\r\n");
  const FileState before = files.StateOf(path);
  int times_asked = 0;
  for (bool has_struck = true; has_struck; times_asked += has_struck ? 1 : 0) {
    int failure = 0;
    {
      WatchedDisk disk(place.path());
      disk.Break(WatchedDisk::Fault::state, times_asked + 1);
      failure = FailureOf([&] { EXPECT_NE(files.Append(path, "2.0 a b\r\n"), before); });
      has_struck = disk.HasStruck();
    }
    ASSERT_EQ(Content(path), failure == file_access ? "before\r\n" : "before\r\n2.0 a b\r\n") << times_asked;
    Write(path, "before\r\n");
  }
  EXPECT_EQ(times_asked, 3);

  for (const int first_or_second : {1, 2}) {
    WatchedDisk disk(place.path());
    disk.Break(WatchedDisk::Fault::state, first_or_second);
    EXPECT_EQ(FailureOf([&] { files.StateOf(path); }), file_access);
  }
}

TEST_F(DesktopFilesTest, ReadUpToAFaultOfTheDisk) {
  const std::string content(1'000'000, 'x');
  Write(path, content);
  WatchedDisk disk(place.path());
  constexpr int third_read = 4;
  disk.Break(WatchedDisk::Fault::once, third_read);
  std::string read;
  EXPECT_FALSE(files.Read(path, [&](std::string_view piece) { read += piece; }));
  EXPECT_TRUE(disk.HasStruck());
  EXPECT_FALSE(read.empty());
  EXPECT_LT(read.size(), content.size());
}

}  // namespace
}  // namespace borvane
