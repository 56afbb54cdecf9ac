#include <optional>

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
