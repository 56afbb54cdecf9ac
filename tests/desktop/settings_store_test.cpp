#include "desktop/services/settings_store.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <memory>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "desktop/settings_on_disk.h"

namespace borvane {
namespace {

constexpr std::string_view hosts_key = R"(Software\Nalvorin\Borvane\Hosts)";

TEST_F(SettingsStoreOnDisk, KeepsTextsUnderTheProgramsKey) {
  QtSettingsStore store;
  EXPECT_EQ(store.FileName(), file());
  EXPECT_EQ(Text(store, "Area"), "missing");
  store.Write(hive, program_key, "Area", "Los Angeles");

  EXPECT_EQ(Text(store, "Area"), "Los Angeles");
  EXPECT_EQ(ReadFile(), "[General]\nArea=Los Angeles\n");
}

TEST_F(SettingsStoreOnDisk, KeepsASubKeyAsAGroup) {
  WriteFile("[Hosts]\nSouthern=127.0.0.1:8080\n");
  QtSettingsStore store;
  EXPECT_EQ(Text(store, "Southern", hosts_key), "127.0.0.1:8080");

  store.Write(hive, hosts_key, "Maker", "localhost");

  EXPECT_EQ(ReadFile(), "[Hosts]\nMaker=localhost\nSouthern=127.0.0.1:8080\n");
}

TEST_F(SettingsStoreOnDisk, LeavesOtherKeysAlone) {
  QtSettingsStore store;
  for (const std::string_view key : {R"(Software\Other)", R"(Software\Nalvorin\BorvaneToo)", ""}) {
    store.Write(hive, key, "Borvane", "x");
    EXPECT_EQ(Text(store, "Borvane", key), "missing");
  }
  EXPECT_EQ(ReadFile(), "missing");
}

TEST_F(SettingsStoreOnDisk, GivesEveryByteBack) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte)
    all += static_cast<char>(byte);
  const std::vector<std::string> texts = {all, "", " 1", "a,b;c=d%\"e\"", "@Invalid()", std::string(1'000'000, 'x')};
  for (const std::string &text : texts) {
    QtSettingsStore().Write(hive, program_key, "LogCity", text);
    QtSettingsStore store;
    EXPECT_EQ(Text(store, "LogCity"), text);
  }
}

TEST_F(SettingsStoreOnDisk, TellsNumbersAndOtherValuesFromTexts) {
  WriteFile(
      "[General]\nNumber=@Variant(\\0\\0\\0\\x2\\0\\0\\0*)\nLarge=@Variant(\\0\\0\\0\\x3\\xee\\x6b\\x28\\0)\n"
      "Yes=@Variant(\\0\\0\\0\\x1\\x1)\nNothing=@Invalid()\nText=42\n");
  QtSettingsStore store;

  EXPECT_EQ(std::get<std::uint32_t>(*store.Read(hive, program_key, "Number")), 42U);
  EXPECT_EQ(std::get<std::uint32_t>(*store.Read(hive, program_key, "Large")), 4'000'000'000U);
  EXPECT_TRUE(std::holds_alternative<OtherValue>(*store.Read(hive, program_key, "Yes")));
  EXPECT_TRUE(std::holds_alternative<OtherValue>(*store.Read(hive, program_key, "Nothing")));
  EXPECT_EQ(Text(store, "Text"), "42");
}

TEST_F(SettingsStoreOnDisk, ReadsACommaThatSomebodyHasWrittenInByHand) {
  WriteFile(
      "[General]\nArea=El Centro, CA\nAlert=4,5\nLogCity=a ,  b , \nMySchool=\"One\", Two\nBarTop=\\x41, b\n"
      "[Hosts]\nSouthern=a,b\nArea=c,d\n");
  QtSettingsStore store;

  EXPECT_EQ(Text(store, "Area"), "El Centro, CA");
  EXPECT_EQ(Text(store, "Alert"), "4,5");
  EXPECT_EQ(Text(store, "LogCity"), "a ,  b ,");
  EXPECT_EQ(Text(store, "MySchool"), "One, Two");
  EXPECT_EQ(Text(store, "BarTop"), "A, b");
  EXPECT_EQ(Text(store, "Southern", hosts_key), "a,b");

  store.Write(hive, program_key, "Area", "El Centro, CA");
  EXPECT_EQ(Text(store, "Area"), "El Centro, CA");
  store.Write(hive, program_key, "Area", "Utah");
  EXPECT_EQ(Text(store, "Area"), "Utah");
  EXPECT_EQ(Text(store, "Alert"), "4,5");
}

TEST_F(SettingsStoreOnDisk, DoesNotWriteAnUnchangedValue) {
  QtSettingsStore store;
  store.Write(hive, program_key, "Area", "Utah");
  WriteFile("[General]\nArea=Utah\n");
  struct stat before = {};
  ASSERT_EQ(::stat(QFile::encodeName(file()).constData(), &before), 0);

  store.Write(hive, program_key, "Area", "Utah");

  struct stat after = {};
  ASSERT_EQ(::stat(QFile::encodeName(file()).constData(), &after), 0);
  EXPECT_EQ(after.st_ino, before.st_ino);
}

TEST_F(SettingsStoreOnDisk, WritesAnEmptyTextWhereThereWasNothing) {
  QtSettingsStore store;
  store.Write(hive, program_key, "LogCity", "");

  EXPECT_EQ(ReadFile(), "[General]\nLogCity=\n");
}

TEST_F(SettingsStoreOnDisk, SeesWhatAnotherProgramHasWritten) {
  QtSettingsStore store;
  store.Write(hive, program_key, "Area", "Utah");
  WriteFile("[General]\nArea=Seattle Area\n");

  EXPECT_EQ(Text(store, "Area"), "Seattle Area");
  store.Write(hive, program_key, "Area", "Utah");
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\n");
}

TEST_F(SettingsStoreOnDisk, UsesWhatCanBeReadOfADamagedFileAndKeepsTheFile) {
  const QByteArray damaged = "[General]\nArea=Utah\n\x01\x02 garbage\nRefresh=60\nAlert=\"4";
  WriteFile(damaged);
  QtSettingsStore store;
  EXPECT_EQ(Text(store, "Area"), "Utah");
  EXPECT_EQ(Text(store, "Refresh"), "60");
  EXPECT_EQ(ReadFile("Borvane.conf.damaged-1"), "missing");

  store.Write(hive, program_key, "RunTime", "2");

  EXPECT_EQ(ReadFile("Borvane.conf.damaged-1"), damaged);
  QtSettingsStore next;
  EXPECT_EQ(Text(next, "Area"), "Utah");
  EXPECT_EQ(Text(next, "RunTime"), "2");
}

TEST_F(SettingsStoreOnDisk, KeepsAsideWhatIsDamagedWhileItRuns) {
  QtSettingsStore store;
  store.Write(hive, program_key, "Area", "Utah");
  WriteFile("[General]\nArea=Sea");
  store.Write(hive, program_key, "Refresh", "60");

  EXPECT_EQ(ReadFile("Borvane.conf.damaged-1"), "[General]\nArea=Sea");
}

class LockOfSettings : public SettingsStoreOnDisk {
 protected:
  /// How long a write takes while the lock files have that content, in milliseconds.
  qint64 WriteTime(const QByteArray &content) {
    WriteFile(content, "Borvane.conf.turn");
    WriteFile(content, "Borvane.conf.turn");
    QElapsedTimer time;
    time.start();
    QtSettingsStore().Write(hive, program_key, "Area", "Utah");
    return time.elapsed();
  }
};

constexpr qint64 no_wait = 700;  // milliseconds; less than the second that another may take

TEST_F(LockOfSettings, CostsNoWaitWhenItIsEmpty) {
  EXPECT_LT(WriteTime(""), no_wait);
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\n");
}

TEST_F(LockOfSettings, CostsNoWaitWhenItIsForeign) {
  EXPECT_LT(WriteTime("not a lock\n"), no_wait);
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\n");
}

TEST_F(LockOfSettings, CostsNoWaitWhenItIsAnotherMachines) {
  EXPECT_LT(WriteTime(QByteArray::number(QCoreApplication::applicationPid()) + "\ntest_desktop\nelsewhere\n"), no_wait);
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\n");
}

/// A lock that somebody holds, as long as this lives.
class HeldLock {
 public:
  explicit HeldLock(const QString &name) : descriptor_(::open(QFile::encodeName(name).constData(), O_RDWR)) {
    EXPECT_EQ(::flock(descriptor_, LOCK_EX | LOCK_NB), 0);
  }
  ~HeldLock() { ::close(descriptor_); }
  HeldLock(const HeldLock &) = delete;
  HeldLock &operator=(const HeldLock &) = delete;

 private:
  int descriptor_;
};

TEST_F(LockOfSettings, CostsNoWaitWhenItsOwnerHasGone) {
  WriteFile("", "Borvane.conf.turn");
  { const HeldLock gone(folder() + "/Borvane.conf.turn"); }
  EXPECT_LT(WriteTime(""), no_wait);
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\n");
}

TEST_F(LockOfSettings, IsWaitedForOnceWhenItsOwnerHangs) {
  const QString lock = folder() + "/Borvane.conf.turn";
  WriteFile("", "Borvane.conf.turn");
  QtSettingsStore store;
  QElapsedTimer time;
  {
    const HeldLock hanging(lock);
    time.start();
    store.Write(hive, program_key, "Area", "Utah");
    EXPECT_GE(time.restart(), 1000);
    store.Write(hive, program_key, "Alert", "4.5");
    EXPECT_LT(time.restart(), no_wait);
    EXPECT_EQ(ReadFile(), "[General]\nAlert=4.5\nArea=Utah\n") << "what the user changes is kept for all that";
  }
  store.Write(hive, program_key, "Alert", "5");

  const HeldLock writing(lock);
  time.restart();
  store.Write(hive, program_key, "Alert", "6");
  EXPECT_GE(time.elapsed(), 1000) << "one that writes may take its time again";
}

TEST_F(LockOfSettings, IsNotInTheWayOfQt) {
  QtSettingsStore store;
  store.Write(hive, program_key, "Area", "Utah");
  QElapsedTimer time;
  time.start();
  QSettings(store.FileName(), QSettings::IniFormat).setValue("Refresh", "60");
  EXPECT_LT(time.elapsed(), no_wait);
  EXPECT_EQ(Text(store, "Refresh"), "60");
}

TEST_F(LockOfSettings, CostsNoWaitWhenItIsNoFile) {
  QDir().mkpath(folder() + "/Borvane.conf.turn/in the way");
  QElapsedTimer time;
  time.start();
  QtSettingsStore store;
  store.Write(hive, program_key, "Area", "Utah");

  EXPECT_LT(time.elapsed(), no_wait);
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\n");
}

TEST_F(SettingsStoreOnDisk, WritesTheFileBehindALink) {
  QDir().mkpath(folder());
  QDir().mkpath(folder() + "/../dot");
  const QString real = QDir(folder() + "/../dot").canonicalPath() + "/conf";
  ASSERT_TRUE(QFile::link(real, file()));
  QtSettingsStore().Write(hive, program_key, "Area", "Utah");
  QtSettingsStore().Write(hive, program_key, "Alert", "4.5");

  EXPECT_TRUE(QFileInfo(file()).isSymLink());
  QFile behind(real);
  ASSERT_TRUE(behind.open(QFile::ReadOnly));
  EXPECT_EQ(behind.readAll(), "[General]\nAlert=4.5\nArea=Utah\n");
  EXPECT_TRUE(QFileInfo::exists(real + ".turn")) << "whoever comes by another link waits for the same lock";
}

TEST_F(SettingsStoreOnDisk, KeepsThePermissionsOfTheFile) {
  WriteFile("[General]\nArea=Utah\n");
  const auto owners = QFile::ReadOwner | QFile::WriteOwner;
  ASSERT_TRUE(QFile::setPermissions(file(), owners));
  QtSettingsStore().Write(hive, program_key, "Area", "Seattle Area");

  EXPECT_EQ(ReadFile(), "[General]\nArea=Seattle Area\n");
  EXPECT_EQ(QFile::permissions(file()) & ~(QFile::ReadUser | QFile::WriteUser), owners);
}

TEST_F(SettingsStoreOnDisk, IsSilentWhenAFolderIsInTheFilesPlace) {
  QDir().mkpath(file());
  QtSettingsStore store;
  EXPECT_EQ(Text(store, "Area"), "missing");
  store.Write(hive, program_key, "Area", "Utah");
  EXPECT_TRUE(QFileInfo(file()).isDir());
}

TEST_F(SettingsStoreOnDisk, IsSilentWhenNothingCanBeWritten) {
  WriteFile("in the way of the folder");
  UseFolder(file());
  QtSettingsStore store;
  store.Write(hive, program_key, "Area", "Utah");

  EXPECT_EQ(ReadFile(), "in the way of the folder");
}

TEST_F(SettingsStoreOnDisk, LosesNothingOfTwoBorvanesThatWriteAtOnce) {
  constexpr int writers = 2;
  constexpr int values = 200;
  // Each write leaves a file of the same length, often within the same tick of the file system's clock.
  QByteArray content = "[General]\n";
  for (int writer = 0; writer < writers; ++writer) {
    for (int value = 0; value < values; ++value)
      content += "W" + QByteArray::number(writer) + "-" + QByteArray::number(value) + "=none\n";
  }
  WriteFile(content);

  std::vector<std::unique_ptr<QProcess>> processes;
  for (int writer = 0; writer < writers; ++writer) {
    processes.push_back(std::make_unique<QProcess>());
    processes.back()->start(
        QCoreApplication::applicationFilePath(),
        {"--write-settings", QFileInfo(folder()).path(), QString::number(writer), QString::number(values)});
  }
  for (const auto &process : processes) {
    ASSERT_TRUE(process->waitForFinished());
    ASSERT_EQ(process->exitCode(), 0);
  }

  QtSettingsStore store;
  for (int writer = 0; writer < writers; ++writer) {
    for (int value = 0; value < values; ++value) {
      const std::string name = "W" + std::to_string(writer) + "-" + std::to_string(value);
      EXPECT_EQ(Text(store, name), "done") << name;
    }
  }
}

}  // namespace
}  // namespace borvane
