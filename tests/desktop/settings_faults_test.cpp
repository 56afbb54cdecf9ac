#include <QElapsedTimer>

#include "desktop/services/settings_file.h"
#include "desktop/settings_on_disk.h"
#include "desktop/watched_disk.h"

namespace borvane {
namespace {

using Lines = std::vector<std::string>;

TEST_F(SettingsStoreOnDisk, HasTheFileAndItsFolderOnTheDiskWhenAWriteIsOver) {
  QtSettingsStore store;
  store.Write(hive, program_key, "Area", "Utah");

  const WatchedDisk disk(folder());
  store.Write(hive, program_key, "Area", "Seattle Area");
  EXPECT_EQ(disk.done(), (Lines{"sync content", "sync content", "name Borvane.conf", "sync ."}));
}

TEST_F(SettingsStoreOnDisk, HasEachNewFolderOnTheDiskWhenTheFirstWriteIsOver) {
  const QString root = QFileInfo(folder()).path();
  UseFolder(root + "/home/.config");
  QtSettingsStore store;

  const WatchedDisk disk(root);
  store.Write(hive, program_key, "Area", "Utah");
  EXPECT_EQ(disk.done(), (Lines{"make home", "sync .", "make home/.config", "sync home", "make home/.config/Nalvorin",
                                "sync home/.config", "sync content", "sync content",
                                "name home/.config/Nalvorin/Borvane.conf", "sync home/.config/Nalvorin"}));
}

TEST_F(SettingsStoreOnDisk, HasTheCopyOfADamagedFileOnTheDiskBeforeTheFileIsWritten) {
  WriteFile("[General]\ngarbage\n");
  QtSettingsStore store;

  const WatchedDisk disk(folder());
  store.Write(hive, program_key, "Area", "Utah");
  EXPECT_EQ(disk.done(), (Lines{"sync content", "sync content", "name Borvane.conf.damaged-1", "sync .", "sync content",
                                "sync content", "name Borvane.conf", "sync ."}));
}

TEST_F(SettingsStoreOnDisk, LeavesTheFileAloneWhenTheNewOneDoesNotReachTheDisk) {
  WriteFile("[General]\nArea=Utah\n");
  QtSettingsStore store;
  {
    WatchedDisk broken(folder());
    broken.Break(WatchedDisk::Fault::sync, 1);
    store.Write(hive, program_key, "Area", "Seattle Area");
    EXPECT_TRUE(broken.HasStruck());
    EXPECT_EQ(broken.done(), Lines());
  }
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\n");
}

TEST_F(SettingsStoreOnDisk, ReadsWhatItCouldReadBeforeWhileTheFileCannotBeRead) {
  WriteFile("[General]\nArea=Utah\nMacID=123\n");
  for (int number = 1; number <= 3; ++number) {
    QtSettingsStore fresh;
    WatchedDisk disk(folder());
    disk.Break(WatchedDisk::Fault::once, number);
    EXPECT_EQ(Text(fresh, "Area"), "Utah") << number;
    EXPECT_EQ(Text(fresh, "MacID"), "123") << number;
    EXPECT_TRUE(disk.HasStruck());
  }
  QtSettingsStore store;
  EXPECT_EQ(Text(store, "Area"), "Utah");
  {
    WatchedDisk broken(folder());
    broken.Break(WatchedDisk::Fault::for_good, 1);
    EXPECT_EQ(Text(store, "MacID"), "123");
    store.Write(hive, program_key, "MacID", "456");
  }
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\nMacID=123\n");
}

TEST_F(SettingsStoreOnDisk, LeavesADamagedFileAloneThatCannotBeKeptAside) {
  const QByteArray damaged = "[General]\nArea=Utah\ngarbage\n";
  WriteFile(damaged);
  QtSettingsStore store;
  {
    WatchedDisk full(folder());
    full.Break(WatchedDisk::Fault::for_good, 1);
    store.Write(hive, program_key, "Refresh", "60");
  }
  EXPECT_EQ(ReadFile(), damaged);
  EXPECT_EQ(ReadFile("Borvane.conf.damaged-1"), "missing");

  store.Write(hive, program_key, "Refresh", "60");
  EXPECT_EQ(ReadFile("Borvane.conf.damaged-1"), damaged);
}

/// What the disk does wrong, and what stands on it before the store writes to it; nothing when there is no file.
struct FaultCase {
  const char *name;
  WatchedDisk::Fault fault;
  const char *content;
};

void PrintTo(const FaultCase &fault, std::ostream *stream) { *stream << fault.name; }

class SettingsOnABrokenDisk : public SettingsStoreOnDisk, public testing::WithParamInterface<FaultCase> {
 protected:
  /// One value is written while the disk breaks at its call with that number, another one behind it. Gives whether it
  /// did break.
  bool WriteWithFault(int number) {
    QDir(folder()).removeRecursively();
    if (GetParam().content != nullptr)
      WriteFile(GetParam().content);
    QtSettingsStore store;
    const std::string area = Text(store, "Area");
    bool has_struck = false;
    {
      WatchedDisk disk(QFileInfo(folder()).path());
      disk.Break(GetParam().fault, number);
      QElapsedTimer time;
      time.start();
      store.Write(hive, program_key, "Refresh", "60");
      EXPECT_LT(time.elapsed(), no_wait);
      has_struck = disk.HasStruck();
    }
    ExpectNothingLost(area);

    store.Write(hive, program_key, "Alert", "4.5");
    ExpectNothingLost(area);
    QtSettingsStore next;
    EXPECT_EQ(Text(next, "Alert"), "4.5");
    return has_struck;
  }

  /// The value from before is there, the one that was written is there or not, and a damaged file is still to be had.
  void ExpectNothingLost(const std::string &area) const {
    QtSettingsStore store;
    EXPECT_EQ(Text(store, "Area"), area);
    const std::string refresh = Text(store, "Refresh");
    EXPECT_TRUE(refresh == "60" || refresh == "missing") << refresh;
    const QByteArray before = GetParam().content;
    if (IsWholeSettingsFile(before))
      EXPECT_TRUE(IsWholeSettingsFile(ReadFile()) || ReadFile() == "missing") << ReadFile().toStdString();
    else
      EXPECT_TRUE(ReadFile() == before || ReadFile("Borvane.conf.damaged-1") == before) << ReadFile().toStdString();
  }

 private:
  static constexpr qint64 no_wait = 5000;  // milliseconds
};

TEST_P(SettingsOnABrokenDisk, LosesNothingWhicheverCallFails) {
  int number = 1;
  while (WriteWithFault(number) && !HasFailure())
    ++number;
  EXPECT_FALSE(HasFailure()) << "with the fault at call " << number;
  EXPECT_GT(number, 1) << "no fault has struck";
}

constexpr const char *whole = "[General]\nArea=Utah\n[Hosts]\nMaker=localhost\n";
constexpr const char *damaged = "[General]\nArea=Utah\ngarbage\n";

INSTANTIATE_TEST_SUITE_P(Store, SettingsOnABrokenDisk,
                         testing::Values(FaultCase{"OnceAtTheFirstWrite", WatchedDisk::Fault::once, nullptr},
                                         FaultCase{"ForGoodAtTheFirstWrite", WatchedDisk::Fault::for_good, nullptr},
                                         FaultCase{"HalfAtTheFirstWrite", WatchedDisk::Fault::half, nullptr},
                                         FaultCase{"OnceWithAFile", WatchedDisk::Fault::once, whole},
                                         FaultCase{"ForGoodWithAFile", WatchedDisk::Fault::for_good, whole},
                                         FaultCase{"HalfWithAFile", WatchedDisk::Fault::half, whole},
                                         FaultCase{"OnceWithADamagedFile", WatchedDisk::Fault::once, damaged},
                                         FaultCase{"ForGoodWithADamagedFile", WatchedDisk::Fault::for_good, damaged},
                                         FaultCase{"HalfWithADamagedFile", WatchedDisk::Fault::half, damaged}),
                         [](const auto &fault) { return std::string(fault.param.name); });

}  // namespace
}  // namespace borvane
