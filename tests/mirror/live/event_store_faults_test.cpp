#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "support/mirror/events_under_test.h"
#include "support/mirror/without_rights.h"

// Files that cannot be used, for whatever reason: what comes meanwhile is written as soon as that is over.

namespace borvane::mirror {
namespace {

class EventFileFaults : public testing::Test {
 protected:
  std::vector<EventRecord> Stored() const {
    EventsUnderTest other(address_);
    other.Start();
    return other.Records();
  }
  void RemoveFile() const {
    for (const char *end : {"", "-wal", "-shm"})
      QFile::remove(address_.file + end);
  }

  QTemporaryDir folder_;
  const StoreAddress address_ = {.file = folder_.filePath("data/events.sqlite")};
};

TEST_F(EventFileFaults, LoseNothingWhileAnotherProgramHasTheFileLocked) {
  EventsUnderTest events(address_);
  events.Start();
  events.Write({Said("before")});
  Database other(address_);
  other.Open();
  other.Begin();
  events.WriteLater({Said("first"), Said("second", 0, 2.0)});
  EXPECT_TRUE(WaitFor([&] { return !events.Lines().isEmpty(); }));
  events.WriteLater({Said("second", 0, 3.0, start_of_test + 1), Said("third")});
  EXPECT_EQ(events.store().Unwritten(), 3U);
  EXPECT_TRUE(events.Lines()[0].contains("database is locked")) << events.Lines()[0].toStdString();
  other.Commit();
  EXPECT_TRUE(events.store().WaitUntilWritten(60'000));
  EXPECT_EQ(Stored(), events.Records());
  EXPECT_EQ(events.Lines().size(), 2);
}

TEST_F(EventFileFaults, LoseNothingWhenTheFileIsRemoved) {
  EventsUnderTest events(address_);
  events.Start();
  events.Write({Said("before"), Gone(Said("gone"), start_of_test)});
  RemoveFile();
  events.Write({Said("after")});
  EXPECT_TRUE(WaitFor([&] { return events.Replacements() == 1 && events.store().Unwritten() == 0; }));
  EXPECT_EQ(Stored(), events.Records());
  EXPECT_EQ(Stored().size(), 3U);
  EXPECT_EQ(events.Lines(), QStringList());
}

TEST_F(EventFileFaults, LoseNothingWhenTheFileIsReplacedByAnotherMirrors) {
  EventsUnderTest events(address_);
  events.Start();
  events.Write({Said("before")});
  const StoreAddress elsewhere = {.file = folder_.filePath("other.sqlite")};
  {
    EventsUnderTest other(elsewhere);
    other.Start();
    other.Write({Said("from the other")});
  }
  RemoveFile();
  ASSERT_TRUE(QFile::rename(elsewhere.file, address_.file));
  events.Write({Said("after")});
  EXPECT_TRUE(WaitFor([&] { return events.Records().size() == 3 && events.store().Unwritten() == 0; }));
  EXPECT_EQ(Stored(), events.Records());
}

TEST_F(EventFileFaults, SeeWhatAnotherMirrorWritesToTheFile) {
  EventsUnderTest one(address_);
  EventsUnderTest other(address_);
  one.Start();
  other.Start();
  one.Write({Said("a")});
  other.Write({Said("b")});
  EXPECT_TRUE(WaitFor([&] { return other.Knows(Said("a")); }));
  one.Write({Said("c")});
  EXPECT_TRUE(WaitFor([&] { return one.Knows(Said("b")); }));
  EXPECT_EQ(Stored().size(), 3U);
  EXPECT_EQ(one.Replacements() + other.Replacements(), 0);
}

// For everyone. This user may be of the group that owns the file.
constexpr auto for_readers = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
constexpr auto for_searchers = QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;

TEST_F(EventFileFaults, ReadAFileThatMayNotBeWritten) {
  {
    EventsUnderTest events(address_);
    events.Start();
    events.Write({Said("before")}, start_of_test);
  }
  QFile::setPermissions(folder_.path(), for_readers | for_searchers | QFile::WriteOwner);
  QFile::setPermissions(address_.file, for_readers);
  QFile::setPermissions(folder_.filePath("data"), for_readers | for_searchers);
  {
    const WithoutRights without_rights;
    EventsUnderTest events(address_);
    events.Start();
    EXPECT_EQ(events.Records(), std::vector<EventRecord>{Said("before")});
    EXPECT_EQ(events.TimeOfData(), start_of_test);
    EXPECT_EQ(events.Lines(), QStringList());
    events.WriteLater({Said("meanwhile")});
    EXPECT_TRUE(WaitFor([&] { return events.Lines().size() == 1; }));
    EXPECT_EQ(events.store().Unwritten(), 1U);
  }
  QFile::setPermissions(folder_.filePath("data"), for_readers | for_searchers | QFile::WriteOwner);
}

TEST_F(EventFileFaults, LeaveAFileThatIsNoStoreAsItIs) {
  ASSERT_TRUE(QDir().mkpath(folder_.filePath("data")));
  const QByteArray text = "Dear diary, today the ground shook.\n" + QByteArray(5'000, '.');
  QFile file(address_.file);
  ASSERT_TRUE(file.open(QFile::ReadWrite));
  file.write(text);
  file.flush();
  EventsUnderTest events(address_);
  events.store().Start(std::chrono::hours(1));
  EXPECT_TRUE(WaitFor([&] { return events.Leads() == true; }));
  events.WriteLater({Said("a")});
  EXPECT_FALSE(events.store().WaitUntilWritten(100));
  ASSERT_EQ(events.Lines().size(), 1);
  EXPECT_TRUE(events.Lines()[0].contains("not a database")) << events.Lines()[0].toStdString();
  file.seek(0);
  EXPECT_EQ(file.readAll(), text);
}

TEST_F(EventFileFaults, KeepWhatComesUntilThereIsRoomForAFolder) {
  QFile in_the_way(folder_.filePath("data"));
  ASSERT_TRUE(in_the_way.open(QFile::WriteOnly));
  EventsUnderTest events(address_);
  events.store().Start(std::chrono::hours(8 * 24));
  events.WriteLater({Said("a")});
  EXPECT_TRUE(WaitFor([&] { return !events.Lines().isEmpty(); }));
  EXPECT_FALSE(events.store().Works());
  ASSERT_TRUE(in_the_way.remove());
  EXPECT_TRUE(events.store().WaitUntilWritten(60'000));
  EXPECT_TRUE(events.store().Works());
  EXPECT_EQ(Stored(), std::vector<EventRecord>{Said("a")});
}

}  // namespace
}  // namespace borvane::mirror
