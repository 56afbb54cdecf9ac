#include "desktop/settings/settings_file_store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/desktop/settings_on_disk.h"
#include "support/desktop/watched_disk.h"

namespace borvane {
namespace {

constexpr std::string_view hosts_key = R"(Software\Nalvorin\Borvane\Hosts)";

class SettingsFileStoreTest : public SettingsOnDisk {
 protected:
  ino_t FileNumber() const {
    struct stat state = {};
    EXPECT_EQ(::stat(QFile::encodeName(file()).constData(), &state), 0);
    return state.st_ino;
  }
};

TEST_F(SettingsFileStoreTest, KeepsTextsUnderTheProgramsKey) {
  SettingsFileStore store(file());
  EXPECT_EQ(Text(store, "Area"), "missing");
  Write(store, "Area", "Los Angeles");

  EXPECT_EQ(Text(store, "Area"), "Los Angeles");
  EXPECT_EQ(ReadFile(), "[General]\nArea=Los Angeles\n");
}

TEST_F(SettingsFileStoreTest, IsInTheUsersFolderForConfiguration) {
  const QByteArray before = qgetenv("XDG_CONFIG_HOME");
  qputenv("XDG_CONFIG_HOME", QFile::encodeName(root()));
  EXPECT_EQ(UserSettingsFile(), file());
  SettingsFileStore store;
  Write(store, "Area", "Utah");
  qputenv("XDG_CONFIG_HOME", before);

  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\n");
}

TEST_F(SettingsFileStoreTest, KeepsASubKeyAsASection) {
  WriteFile("[Hosts]\nSouthern=127.0.0.1:8080\n");
  SettingsFileStore store(file());
  EXPECT_EQ(Text(store, "Southern", hosts_key), "127.0.0.1:8080");

  store.Write(hosts_key, "Maker", "localhost");

  EXPECT_EQ(ReadFile(), "[Hosts]\nSouthern=127.0.0.1:8080\nMaker=localhost\n");
}

TEST_F(SettingsFileStoreTest, LeavesOtherKeysAlone) {
  SettingsFileStore store(file());
  for (const std::string_view key : {R"(Software\Other)", R"(Software\Nalvorin\BorvaneToo)", ""}) {
    store.Write(key, "Borvane", "x");
    EXPECT_EQ(Text(store, "Borvane", key), "missing");
  }
  EXPECT_EQ(ReadFile(), "missing");
}

TEST_F(SettingsFileStoreTest, GivesEveryByteBack) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte)
    all += static_cast<char>(byte);
  const std::vector<std::string> texts = {all, "", " 1", "a,b;c=d%\"e\"", std::string(1'000'000, 'x')};
  for (const std::string &text : texts) {
    SettingsFileStore writer(file());
    Write(writer, "LogCity", text);
    SettingsFileStore reader(file());
    EXPECT_EQ(Text(reader, "LogCity"), text);
  }
}

TEST_F(SettingsFileStoreTest, LeavesCommentsAndTheOrderOfLinesAsTheyAre) {
  WriteFile("# The school's\n[Hosts]\nMaker=a:1 ; ours\n\n; mine\n[General]\nRefresh=60\n# MacID=1\nArea=Utah");
  SettingsFileStore store(file());
  Write(store, "Refresh", "70");
  store.Write(hosts_key, "Maker", "b:2");
  Write(store, "Alert", "4.5");

  EXPECT_EQ(ReadFile(),
            "# The school's\n[Hosts]\nMaker=b:2 ; ours\n\n; mine\n[General]\nRefresh=70\n# MacID=1\nArea=Utah\n"
            "Alert=4.5\n");
  EXPECT_EQ(Files(), QStringList({"Borvane.conf", "Borvane.conf.writing"}))
      << "a last line without a line feed is no damage";
}

TEST_F(SettingsFileStoreTest, DoesNotWriteAnUnchangedValue) {
  WriteFile("[General]\nArea=Utah\n");
  SettingsFileStore store(file());
  const ino_t before = FileNumber();
  Write(store, "Area", "Utah");
  EXPECT_EQ(FileNumber(), before);

  Write(store, "Area", "Seattle Area");
  EXPECT_NE(FileNumber(), before);
}

TEST_F(SettingsFileStoreTest, WritesAnEmptyTextWhereThereWasNothing) {
  SettingsFileStore store(file());
  Write(store, "LogCity", "");

  EXPECT_EQ(ReadFile(), "[General]\nLogCity=\n");
}

TEST_F(SettingsFileStoreTest, SeesWhatAnotherProgramHasWritten) {
  SettingsFileStore store(file());
  Write(store, "Area", "Utah");
  WriteFile("[General]\nArea=Seattle Area\n");

  EXPECT_EQ(Text(store, "Area"), "Seattle Area");
  Write(store, "Area", "Utah");
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\n");
}

TEST_F(SettingsFileStoreTest, UsesWhatCanBeReadOfADamagedFileAndMendsItWithTheFirstWrite) {
  const QByteArray damaged = "[General]\nArea=Utah\n\x01\x02 garbage\nRefresh=60\n# mine\nAlert=\"4";
  WriteFile(damaged);
  SettingsFileStore store(file());
  EXPECT_EQ(Text(store, "Area"), "Utah");
  EXPECT_EQ(Text(store, "Refresh"), "60");
  EXPECT_EQ(Text(store, "Alert"), "4");
  EXPECT_EQ(Files(), QStringList("Borvane.conf"));

  Write(store, "RunTime", "2");

  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\nRefresh=60\n# mine\nAlert=4\nRunTime=2\n");
  EXPECT_EQ(ReadFile("Borvane.conf.damaged-1"), damaged);
}

TEST_F(SettingsFileStoreTest, KeepsOneCopyOfEachDamage) {
  const QByteArray damaged = "[General]\nArea=\"Utah\n";
  WriteFile(damaged);
  for (int start = 1; start <= 5; ++start) {
    SettingsFileStore store(file());
    Write(store, "RunTime", std::to_string(start));
    Write(store, "Refresh", std::to_string(start));
  }
  EXPECT_EQ(Files(), QStringList({"Borvane.conf", "Borvane.conf.damaged-1", "Borvane.conf.writing"}));

  SettingsFileStore store(file());
  WriteFile("garbage\n");
  Write(store, "RunTime", "6");
  WriteFile(damaged);
  Write(store, "RunTime", "7");

  EXPECT_EQ(Files(),
            QStringList({"Borvane.conf", "Borvane.conf.damaged-1", "Borvane.conf.damaged-2", "Borvane.conf.writing"}));
  EXPECT_EQ(ReadFile("Borvane.conf.damaged-1"), damaged);
  EXPECT_EQ(ReadFile("Borvane.conf.damaged-2"), "garbage\n");
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\nRunTime=7\n");
}

TEST_F(SettingsFileStoreTest, WritesTheFileThatALinkLeadsTo) {
  QDir().mkpath(folder());
  QDir().mkpath(root() + "/dot");
  const QString real = QDir(root() + "/dot").canonicalPath() + "/conf";
  ASSERT_TRUE(QFile::link(real, file()));
  SettingsFileStore store(file());
  Write(store, "Area", "Utah");
  Write(store, "Alert", "4.5");

  EXPECT_TRUE(QFileInfo(file()).isSymLink());
  QFile target(real);
  ASSERT_TRUE(target.open(QFile::ReadOnly));
  EXPECT_EQ(target.readAll(), "[General]\nArea=Utah\nAlert=4.5\n");
  EXPECT_TRUE(QFileInfo::exists(real + ".writing")) << "whoever comes by another link waits for the same lock";
}

TEST_F(SettingsFileStoreTest, KeepsThePermissionsOfTheFile) {
  WriteFile("[General]\nArea=Utah\n");
  const auto owners = QFile::ReadOwner | QFile::WriteOwner;
  ASSERT_TRUE(QFile::setPermissions(file(), owners));
  SettingsFileStore store(file());
  Write(store, "Area", "Seattle Area");

  EXPECT_EQ(ReadFile(), "[General]\nArea=Seattle Area\n");
  EXPECT_EQ(QFile::permissions(file()) & ~(QFile::ReadUser | QFile::WriteUser), owners);
}

TEST_F(SettingsFileStoreTest, IsSilentWhenAFolderIsInTheFilesPlace) {
  QDir().mkpath(file());
  SettingsFileStore store(file());
  EXPECT_EQ(Text(store, "Area"), "missing");
  Write(store, "Area", "Utah");
  EXPECT_EQ(Text(store, "Area"), "missing");
  EXPECT_TRUE(QFileInfo(file()).isDir());
}

TEST_F(SettingsFileStoreTest, IsSilentWhenNothingCanBeWritten) {
  WriteFile("in the way of the folder");
  SettingsFileStore store(file() + "/Borvane.conf");
  testing::internal::CaptureStderr();
  Write(store, "Area", "Utah");
  store.Finish();

  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(ReadFile(), "in the way of the folder");
}

TEST_F(SettingsFileStoreTest, WritesAllThatAnEventStoresAtItsEnd) {
  SettingsFileStore store(file());
  store.BeginEvent();
  Write(store, "LastBig", "4.5");
  Write(store, "BigPlace", "Castaic");
  Write(store, "LastBig", "4.6");
  EXPECT_EQ(ReadFile(), "missing");
  EXPECT_EQ(Text(store, "LastBig"), "4.6");
  EXPECT_EQ(Text(store, "BigPlace"), "Castaic");

  std::vector<std::string> done_at_the_end;
  {
    const WatchedDisk disk(root());
    store.EndEvent();
    done_at_the_end = disk.done();
  }
  EXPECT_EQ(ReadFile(), "[General]\nLastBig=4.6\nBigPlace=Castaic\n");

  QDir(folder()).removeRecursively();
  const WatchedDisk disk(root());
  Write(store, "LastBig", "4.6");
  EXPECT_EQ(done_at_the_end, disk.done()) << "it costs as much as one value";
}

TEST_F(SettingsFileStoreTest, WritesWhatAnEventHasStoredBeforeTheNextBegins) {
  SettingsFileStore store(file());
  store.BeginEvent();
  Write(store, "Area", "Utah");
  store.BeginEvent();
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\n");

  Write(store, "Alert", "4.0");
  store.EndEvent();
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\nAlert=4.0\n");

  Write(store, "Refresh", "60");
  EXPECT_EQ(Text(store, "Refresh"), "60");
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\nAlert=4.0\n") << "the outer event is under way";
  store.EndEvent();
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\nAlert=4.0\nRefresh=60\n");
}

TEST_F(SettingsFileStoreTest, ShowsAnEventOneStateOfTheFileAndEachEventTheNewest) {
  WriteFile("[General]\nLastBig=4.5\n");
  SettingsFileStore store(file());
  store.BeginEvent();
  EXPECT_EQ(Text(store, "LastBig"), "4.5");
  WriteFile("[General]\nLastBig=5.5\nBigPlace=Utah\n");
  EXPECT_EQ(Text(store, "LastBig"), "4.5") << "an event reads the file once";
  EXPECT_EQ(Text(store, "BigPlace"), "missing");

  store.BeginEvent();
  EXPECT_EQ(Text(store, "LastBig"), "5.5");
  store.EndEvent();
  EXPECT_EQ(Text(store, "LastBig"), "5.5");
  store.EndEvent();

  WriteFile("[General]\nLastBig=6.5\n");
  EXPECT_EQ(Text(store, "LastBig"), "6.5");
}

TEST_F(SettingsFileStoreTest, DoesNotWriteWhatAnEventHasChangedAndChangedBack) {
  SettingsFileStore store(file());
  Write(store, "Area", "Utah");
  const ino_t before = FileNumber();
  store.BeginEvent();
  Write(store, "Area", "Los Angeles");
  Write(store, "Area", "Utah");
  store.EndEvent();
  EXPECT_EQ(FileNumber(), before);
}

TEST_F(SettingsFileStoreTest, WritesInsideAnEventOnRequest) {
  SettingsFileStore store(file());
  store.BeginEvent();
  Write(store, "Area", "Utah");
  store.WriteKept();
  EXPECT_EQ(ReadFile(), "[General]\nArea=Utah\n");
  EXPECT_EQ(Text(store, "Area"), "Utah");
  store.EndEvent();
}

}  // namespace
}  // namespace borvane
