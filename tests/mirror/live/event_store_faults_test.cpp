#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>

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
  EXPECT_EQ(events.store().Unwritten(), 4U);
  EXPECT_TRUE(events.Lines()[0].contains("database is locked")) << events.Lines()[0].toStdString();
  other.Commit();
  EXPECT_TRUE(events.store().WaitUntilWritten(60'000));
  EXPECT_EQ(Stored(), events.Records());
  EXPECT_EQ(events.Lines().size(), 2);
  const QVariantList revision = other.Row("select magnitude from revision where id = ?", {QByteArray("second")});
  EXPECT_EQ(revision.value(0).toDouble(), 2.0) << "no revision is lost";
}

TEST_F(EventFileFaults, KeepTheNewestStatesOfTheNewestEventsWhenTooMuchIsUnwritten) {
  EventsUnderTest events(address_, {.unwritten = 20});
  events.Start();
  events.Write({Said("before")});
  Database other(address_);
  other.Open();
  other.Begin();
  for (int i = 0; i < 100; ++i) {
    events.WriteLater({Said("revised", 0, i / 100.0, start_of_test + i)});
    EXPECT_LE(events.store().Unwritten(), 20U);
  }
  for (int i = 0; i < 100; ++i) {
    events.WriteLater({SaidAt(QString("e%1").arg(i), start_of_test - 2 * one_hour + i)});
    EXPECT_LE(events.store().Unwritten(), 20U);
  }
  other.Commit();
  EXPECT_TRUE(events.store().WaitUntilWritten(60'000));
  QStringList ids;
  for (const EventRecord &record : Stored())
    ids.append(record.event.id);
  EXPECT_TRUE(ids.contains("e99") && !ids.contains("e50")) << ids.join(' ').toStdString();
  const std::vector<EventRecord> stored = Stored();
  EXPECT_TRUE(std::find(stored.begin(), stored.end(), Said("revised", 0, 0.99, start_of_test + 99)) != stored.end());
}

TEST_F(EventFileFaults, AgreeOnWhatTwoMirrorsWroteOfOneEventMeanwhile) {
  EventsUnderTest one(address_);
  EventsUnderTest two(address_);
  one.Start();
  two.Start();
  one.Write({Said("before")});
  Database other(address_);
  other.Open();
  other.Begin();
  const EventRecord later = Said("both", 0, 3.0, start_of_test + 2);
  one.WriteLater({Said("both", 0, 2.0, start_of_test + 1)});
  two.WriteLater({later});
  EXPECT_TRUE(WaitFor([&] { return !one.Lines().isEmpty() && !two.Lines().isEmpty(); }));
  other.Commit();
  EXPECT_TRUE(one.store().WaitUntilWritten(60'000) && two.store().WaitUntilWritten(60'000));
  one.Write({Said("one")});
  two.Write({Said("two")});
  EXPECT_TRUE(WaitFor([&] { return one.Knows(later) && two.Knows(later); }));
  const std::vector<EventRecord> stored = Stored();
  EXPECT_TRUE(std::find(stored.begin(), stored.end(), later) != stored.end());
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
  EXPECT_EQ(events.Lines(), QStringList(address_.file + " was removed: the events in memory are still served, and are "
                                                        "written to a new one; what was older is lost"));
  RemoveFile();
  events.Write({Said("last")});
  EXPECT_TRUE(WaitFor([&] { return events.Replacements() == 2 && events.store().Unwritten() == 0; }));
  EXPECT_EQ(events.Lines().size(), 2) << "each time";
}

TEST_F(EventFileFaults, WriteManyEventsAgainInSeveralTransactions) {
  EventsUnderTest events(address_);
  events.Start();
  std::vector<EventRecord> many;
  for (int i = 0; i < 5'001; ++i)
    many.push_back(Said(QString("ci%1").arg(i)));
  events.Write(many);
  RemoveFile();
  events.Write({Said("after")});
  EXPECT_TRUE(WaitFor([&] { return events.Replacements() == 1 && events.store().Unwritten() == 0; }));
  EXPECT_EQ(Stored(), events.Records());
  Database database(address_);
  database.Open();
  EXPECT_EQ(database.Row("select number from state").at(0).toInt(), 3);
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
  EXPECT_EQ(
      events.Lines(),
      QStringList(address_.file + " was replaced: the events of the new store are served as well from now on, and "
                                  "the events in memory are written to it"));
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
  EXPECT_EQ(one.Lines() + other.Lines(), QStringList());
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
  QFile left(address_.file);
  ASSERT_TRUE(left.open(QFile::ReadOnly));
  EXPECT_EQ(left.readAll(), text);
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
