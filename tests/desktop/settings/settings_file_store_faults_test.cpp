#include <csignal>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

#include "desktop/settings/durable_file.h"
#include "desktop/settings/settings_file.h"
#include "desktop/settings/write_lock.h"
#include "support/desktop/settings_on_disk.h"
#include "support/desktop/watched_disk.h"

namespace borvane {
namespace {

using Lines = std::vector<std::string>;

TEST_F(SettingsOnDisk, AreOnTheDiskWithTheirFolderWhenAWriteIsOver) {
  SettingsFileStore store(file());
  Write(store, "Area", "Utah");

  const WatchedDisk disk(folder());
  Write(store, "Area", "Seattle Area");
  EXPECT_EQ(disk.done(), (Lines{"sync content", "sync content", "name Borvane.conf", "sync ."}));
}

TEST_F(SettingsOnDisk, AreOnTheDiskWithEachNewFolderWhenTheFirstWriteIsOver) {
  SettingsFileStore store(root() + "/home/.config/Nalvorin/Borvane.conf");

  const WatchedDisk disk(root());
  Write(store, "Area", "Utah");
  EXPECT_EQ(disk.done(), (Lines{"make home", "sync .", "make home/.config", "sync home", "make home/.config/Nalvorin",
                                "sync home/.config", "sync content", "sync content",
                                "name home/.config/Nalvorin/Borvane.conf", "sync home/.config/Nalvorin"}));
}

TEST_F(SettingsOnDisk, AreWrittenWhenTheCopyOfADamagedFileIsOnTheDisk) {
  WriteFile("[General]\ngarbage\n");
  SettingsFileStore store(file());

  const WatchedDisk disk(folder());
  Write(store, "Area", "Utah");
  EXPECT_EQ(disk.done(), (Lines{"sync content", "sync content", "name Borvane.conf.damaged-1", "sync .", "sync content",
                                "sync content", "name Borvane.conf", "sync ."}));
}

TEST_F(SettingsOnDisk, AreWrittenOnceHoweverManyAreKept) {
  SettingsFileStore store(file(), 0);
  {
    QDir().mkpath(folder());
    const WriteLock lock(lock_file(), 0);
    Write(store, "Area", "Utah");
    Write(store, "Refresh", "60");
  }
  const WatchedDisk disk(folder());
  store.Finish();
  EXPECT_EQ(disk.done(), (Lines{"sync content", "sync content", "name Borvane.conf", "sync ."}));
}

TEST_F(SettingsOnDisk, StayAsTheyWereWhenTheNewFileDoesNotReachTheDisk) {
  WriteFile("[General]\nArea=Utah\n");
  SettingsFileStore store(file());
  {
    WatchedDisk broken(folder());
    broken.Break(WatchedDisk::Fault::sync, 1);
    Write(store, "Area", "Seattle Area");
    EXPECT_TRUE(broken.HasStruck());
    EXPECT_EQ(broken.done(), Lines());
  }
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\n");
}

TEST_F(SettingsOnDisk, ReadAsTheyCouldBeReadBeforeWhileTheFileCannotBeRead) {
  WriteFile("[General]\nArea=Utah\nMacID=123\n");
  for (int number = 1; number <= 3; ++number) {
    SettingsFileStore fresh(file());
    WatchedDisk disk(folder());
    disk.Break(WatchedDisk::Fault::once, number);
    EXPECT_EQ(Text(fresh, "Area"), "Utah") << number;
    EXPECT_EQ(Text(fresh, "MacID"), "123") << number;
    EXPECT_TRUE(disk.HasStruck());
  }
  SettingsFileStore store(file());
  EXPECT_EQ(Text(store, "Area"), "Utah");
  {
    WatchedDisk broken(folder());
    broken.Break(WatchedDisk::Fault::for_good, 1);
    EXPECT_EQ(Text(store, "MacID"), "123");
    Write(store, "MacID", "456");
  }
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\nMacID=123\n");
}

TEST_F(SettingsOnDisk, StayDamagedWhenTheDamagedFileCannotBeCopied) {
  const QByteArray damaged = "[General]\nArea=Utah\ngarbage\n";
  WriteFile(damaged);
  SettingsFileStore store(file());
  {
    WatchedDisk full(folder());
    full.Break(WatchedDisk::Fault::for_good, 1);
    Write(store, "Refresh", "60");
  }
  EXPECT_EQ(ReadFile(), damaged);
  EXPECT_EQ(ReadFile("Borvane.conf.damaged-1"), "missing");

  Write(store, "Refresh", "60");
  EXPECT_EQ(ReadFile("Borvane.conf.damaged-1"), damaged);
}

/// What a page of rising magnitudes writes, one value after the other.
const std::vector<std::pair<std::string, std::string>> rising = {
    {"LastBig", "2.0"}, {"BigPlace", "first"},  {"BigTime", "01:00:00"}, {"BigDate", "2018/02/07"},
    {"LastBig", "3.0"}, {"BigPlace", "second"}, {"BigTime", "02:00:00"}, {"BigDate", "2018/02/08"},
    {"LastBig", "4.0"}, {"BigPlace", "third"},  {"BigTime", "03:00:00"}, {"BigDate", "2018/02/09"}};

/// The settings of one start after the other, while a page of rising magnitudes is written.
class RisingSettingsOnDisk : public SettingsOnDisk {
 protected:
  using Values = std::map<std::string, std::string>;

  /// A file from before, with the values of the first event of the page or without them.
  void Begin(bool with_an_event) {
    QDir(folder()).removeRecursively();
    WriteFile(with_an_event ? "# mine\n[General]\nLastBig=1.0\nBigPlace=before\nBigTime=00:00:00\nBigDate=2018/02/06\n"
                            : "# mine\n[General]\nArea=Utah\n");
    before_ = Stored();
  }

  /// Writes all of it within one event, which lets others in after these numbers of values.
  void WriteRising(const std::set<std::size_t> &lets_others_in = {}) const {
    SettingsFileStore store(file(), 0);
    store.BeginEvent();
    for (std::size_t number = 0; number < rising.size(); ++number) {
      if (lets_others_in.contains(number)) {
        store.BeginEvent();
        store.EndEvent();
      }
      Write(store, rising[number].first, rising[number].second);
    }
    store.EndEvent();
  }

  /// The number of values that have been written, as a prefix of all; nothing when the file is none's.
  std::optional<std::size_t> Prefix() const {
    const Values stored = Stored();
    Values expected = before_;
    for (std::size_t written = 0;; ++written) {
      if (stored == expected)
        return written;
      if (written == rising.size())
        return {};
      expected[rising[written].first] = rising[written].second;
    }
  }

  Values Stored() const {
    SettingsFileStore store(file());
    Values stored;
    for (const char *name : {"Area", "LastBig", "BigPlace", "BigTime", "BigDate"})
      stored[name] = Text(store, name);
    return stored;
  }

 private:
  Values before_;
};

TEST_F(RisingSettingsOnDisk, HoldAPrefixOfTheWritesWhicheverCallFails) {
  for (const auto fault : {WatchedDisk::Fault::once, WatchedDisk::Fault::for_good, WatchedDisk::Fault::half}) {
    for (const bool with_an_event : {false, true}) {
      std::set<std::size_t> prefixes;
      bool has_struck = true;
      for (int number = 1; has_struck; ++number) {
        Begin(with_an_event);
        {
          WatchedDisk disk(root());
          disk.Break(fault, number);
          WriteRising();
          has_struck = disk.HasStruck();
        }
        const std::optional<std::size_t> prefix = Prefix();
        ASSERT_TRUE(prefix) << "call " << number << ": " << ReadFile().toStdString();
        ASSERT_TRUE(ReadFile().startsWith("# mine\n")) << "call " << number;
        prefixes.insert(*prefix);
      }
      EXPECT_TRUE(prefixes.contains(rising.size())) << "without a fault";
      EXPECT_TRUE(fault == WatchedDisk::Fault::half || prefixes.contains(0)) << "no fault has stopped a write";
    }
  }
}

TEST_F(RisingSettingsOnDisk, HoldAPrefixOfTheWritesWhenTheProcessIsKilledAtAnyCall) {
  for (const bool with_an_event : {false, true}) {
    std::set<std::size_t> prefixes;
    int status = SIGKILL;
    for (int number = 1; WIFSIGNALED(status); ++number) {
      Begin(with_an_event);
      const pid_t child = ::fork();
      if (child == 0) {
        WatchedDisk disk(root());
        disk.Break(WatchedDisk::Fault::kill, number);
        WriteRising({2, 7});
        ::_exit(0);
      }
      ASSERT_EQ(::waitpid(child, &status, 0), child);
      ASSERT_TRUE(WIFEXITED(status) || WTERMSIG(status) == SIGKILL) << status;
      const std::optional<std::size_t> prefix = Prefix();
      ASSERT_TRUE(prefix) << "call " << number << ": " << ReadFile().toStdString();
      prefixes.insert(*prefix);
    }
    EXPECT_EQ(prefixes, (std::set<std::size_t>{0, 2, 7, rising.size()})) << "each of them on the disk in turn";
  }
}

/// What the disk does wrong, and what is on it before the store writes to it; null when there is no file.
struct FaultCase {
  const char *name;
  WatchedDisk::Fault fault;
  const char *content;
  bool is_kept = false;  ///< whether another one held the lock at first
};

void PrintTo(const FaultCase &fault, std::ostream *stream) { *stream << fault.name; }

class SettingsOnABrokenDisk : public SettingsOnDisk, public testing::WithParamInterface<FaultCase> {
 protected:
  /// One value is written while the call of the disk with that number fails, then another one. Gives whether it failed.
  bool WriteWithFault(int number) {
    QDir(folder()).removeRecursively();
    if (GetParam().content != nullptr)
      WriteFile(GetParam().content);
    SettingsFileStore store(file(), 0);
    const std::string area = Text(store, "Area");
    if (GetParam().is_kept) {
      const WriteLock lock(lock_file(), 0);
      Write(store, "Refresh", "60");
    }
    bool has_struck = false;
    {
      WatchedDisk disk(root());
      disk.Break(GetParam().fault, number);
      if (GetParam().is_kept)
        store.Finish();
      else
        Write(store, "Refresh", "60");
      has_struck = disk.HasStruck();
    }
    ExpectNothingLost(area);

    Write(store, "Alert", "4.5");
    ExpectNothingLost(area);
    SettingsFileStore next(file());
    EXPECT_EQ(Text(next, "Alert"), "4.5");
    EXPECT_EQ(WithoutDamage(Content()), Content());
    EXPECT_EQ(ReadFile("Borvane.conf.damaged-2"), "missing");
    return has_struck;
  }

  QByteArray Content() const { return ContentOfFile(file()).value(); }

  /// The value from before is there, the one that was written is there or not, comments have survived, and a damaged
  /// file is as it was or has its copy.
  void ExpectNothingLost(const std::string &area) const {
    SettingsFileStore store(file());
    EXPECT_EQ(Text(store, "Area"), area);
    const std::string refresh = Text(store, "Refresh");
    EXPECT_TRUE(refresh == "60" || refresh == "missing") << refresh;
    const QByteArray before = GetParam().content;
    EXPECT_EQ(ReadFile().contains("# mine\n"), before.contains("# mine\n"));
    if (WithoutDamage(before) == before)
      EXPECT_EQ(WithoutDamage(Content()), Content());
    else
      EXPECT_TRUE(ReadFile() == before || ReadFile("Borvane.conf.damaged-1") == before) << ReadFile().toStdString();
  }
};

TEST_P(SettingsOnABrokenDisk, LosesNothingWhicheverCallFails) {
  int number = 1;
  while (WriteWithFault(number) && !HasFailure())
    ++number;
  EXPECT_FALSE(HasFailure()) << "with the fault at call " << number;
  EXPECT_GT(number, 1) << "no fault has struck";
}

constexpr const char *whole = "# mine\n[General]\nArea=Utah\n[Hosts]\nMaker=localhost ; ours";
constexpr const char *damaged = "# mine\n[General]\nArea=\"Utah\ngarbage\n";

INSTANTIATE_TEST_SUITE_P(Store, SettingsOnABrokenDisk,
                         testing::Values(FaultCase{"OnceAtTheFirstWrite", WatchedDisk::Fault::once, nullptr},
                                         FaultCase{"ForGoodAtTheFirstWrite", WatchedDisk::Fault::for_good, nullptr},
                                         FaultCase{"HalfAtTheFirstWrite", WatchedDisk::Fault::half, nullptr},
                                         FaultCase{"OnceWithAFile", WatchedDisk::Fault::once, whole},
                                         FaultCase{"ForGoodWithAFile", WatchedDisk::Fault::for_good, whole},
                                         FaultCase{"HalfWithAFile", WatchedDisk::Fault::half, whole},
                                         FaultCase{"OnceWithADamagedFile", WatchedDisk::Fault::once, damaged},
                                         FaultCase{"ForGoodWithADamagedFile", WatchedDisk::Fault::for_good, damaged},
                                         FaultCase{"HalfWithADamagedFile", WatchedDisk::Fault::half, damaged},
                                         FaultCase{"OnceWithAKeptValue", WatchedDisk::Fault::once, whole, true},
                                         FaultCase{"ForGoodWithAKeptValue", WatchedDisk::Fault::for_good, whole, true},
                                         FaultCase{"OnceWithAKeptValueAndADamagedFile", WatchedDisk::Fault::once,
                                                   damaged, true}),
                         [](const auto &fault) { return std::string(fault.param.name); });

}  // namespace
}  // namespace borvane
