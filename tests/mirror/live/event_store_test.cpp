#include "live/event_store.h"

#include <QFile>
#include <QTemporaryDir>
#include <limits>

#include "support/mirror/databases.h"
#include "support/mirror/events_under_test.h"

namespace borvane::mirror {
namespace {

TEST(EventStoreAddress, IsAFileBesideTheServices) {
  EXPECT_EQ(EventStoreAddress({.file = "/a/service.sqlite"}).file, "/a/service-events.sqlite");
  EXPECT_EQ(EventStoreAddress({.file = "/a.b/c.d.db"}).file, "/a.b/c.d-events.sqlite");
  EXPECT_EQ(EventStoreAddress({.file = "felt"}).file, "./felt-events.sqlite");
}

TEST(EventStoreAddress, IsASchemaOfItsOwnInTheServicesDatabase) {
  const StoreAddress address = EventStoreAddress({.host = "db", .database = "felt"});
  EXPECT_FALSE(address.IsFile());
  EXPECT_EQ(address.database, "felt");
  EXPECT_EQ(address.schema, "borvane_events");
}

class EventStoreOnEveryDatabase : public OnEveryDatabase {
 protected:
  /// What a mirror that starts now reads.
  std::vector<EventRecord> Stored(std::chrono::milliseconds span = std::chrono::hours(8 * 24)) const {
    EventsUnderTest other(address_);
    other.Start(span);
    return other.Records();
  }
  qint64 Count(const QString &table) const {
    Database database(address_);
    database.Open();
    return database.Row("select count(*) from " + table).at(0).toLongLong();
  }

  const StoreAddress address_ = EventStoreAddress(database_.Address());
};
INSTANTIATE_TEST_SUITE_P(Events, EventStoreOnEveryDatabase,
                         testing::Values(DatabaseKind::SQLite, DatabaseKind::PostgreSQL), KindName);

TEST_P(EventStoreOnEveryDatabase, BeginsEmpty) {
  EventsUnderTest events(address_);
  events.Start();
  EXPECT_EQ(events.Records().size(), 0U);
  EXPECT_EQ(events.TimeOfData(), 0);
  EXPECT_TRUE(WaitFor([&] { return events.Leads() == true; }));
  EXPECT_EQ(events.Lines(), QStringList());
}

TEST_P(EventStoreOnEveryDatabase, ReturnsWhatWasWritten) {
  EventRecord full = Said("ci1");
  full.other_ids = {"us1", "nn.1_2-3"};
  full.event.place = QString("東 Cañon \U0001F30B ') \\ ") + QChar(0) + "\n";
  full.event.depth = -1.23456789012345;
  full.event.latitude = 0.1 + 0.2;
  full.event.longitude = -179.99999999999997;
  full.event.magnitude = -0.75;
  EventRecord empty = Said("ci2", 1);
  empty.event.depth.reset();
  empty.event.magnitude.reset();
  empty.event.place = empty.event.network = empty.event.kind = "";
  empty.event.updated = 0;
  const EventRecord gone = Gone(Said("ci3"), start_of_test);
  EventsUnderTest events(address_);
  events.Start();
  events.Write({full, empty, gone}, start_of_test - 5);
  EXPECT_EQ(Stored(), (std::vector<EventRecord>{full, gone, empty}));

  EventsUnderTest other(address_);
  other.Start();
  EXPECT_EQ(other.TimeOfData(), start_of_test - 5);
}

TEST_P(EventStoreOnEveryDatabase, WritesManyRecordsAtOnce) {
  std::vector<EventRecord> records;
  for (int i = 0; i < 300; ++i)
    records.push_back(Said(QString("e%1").arg(i), i % 2, i / 100.0));
  EventsUnderTest events(address_);
  events.Start();
  events.Write(records);
  EXPECT_EQ(Stored(), events.Records());
  for (EventRecord &record : records) {
    record.event.magnitude = 7;
    record.seen += 1;
  }
  events.Write(records);
  EXPECT_EQ(Stored(), events.Records());
  EXPECT_EQ(Count("revision"), 300);
}

TEST_P(EventStoreOnEveryDatabase, KeepsTheRevisionsOfAnEvent) {
  EventsUnderTest events(address_);
  events.Start();
  for (int revision = 0; revision < 10; ++revision)
    events.Write({Said("ci1", 0, 2 + revision / 10.0, start_of_test + revision)});
  events.Write({Gone(Said("ci1", 0, 2.9), start_of_test + 10)});
  EXPECT_EQ(Count("event"), 1);
  Database database(address_);
  database.Open();
  std::vector<double> magnitudes;
  database.ForEachRow("select magnitude from revision where id = ? order by number", {QByteArray("ci1")},
                      [&](const QSqlQuery &row) {
                        magnitudes.push_back(row.value(0).toDouble());
                        return true;
                      });
  EXPECT_EQ(magnitudes, (std::vector<double>{2.0, 2.1, 2.2, 2.3, 2.4, 2.5, 2.6, 2.7, 2.8, 2.9}));
}

TEST_P(EventStoreOnEveryDatabase, IsNotOverwrittenWithWhatIsOlder) {
  EventsUnderTest events(address_);
  events.Start();
  events.Write({Said("ci1", 0, 3.0, start_of_test)});
  events.Write({Said("ci1", 0, 2.0, start_of_test - 1)});
  EXPECT_EQ(Stored(), std::vector<EventRecord>{Said("ci1", 0, 3.0, start_of_test)});
}

TEST_P(EventStoreOnEveryDatabase, KeepsTheTimeOfTheDataWithoutAnyChange) {
  EventsUnderTest events(address_);
  events.Start();
  events.Write({Said("ci1")}, start_of_test);
  events.Write({}, start_of_test + 7);
  EventsUnderTest other(address_);
  other.Start();
  EXPECT_EQ(other.TimeOfData(), start_of_test + 7);
}

TEST_P(EventStoreOnEveryDatabase, ReadsOnlyWhatIsAskedFor) {
  EventsUnderTest events(address_);
  events.Start();
  events.Write({SaidAt("old", start_of_test - 8 * one_day - 1), SaidAt("new", start_of_test - 8 * one_day)});
  EXPECT_EQ(Stored(), std::vector<EventRecord>{SaidAt("new", start_of_test - 8 * one_day)});
  EXPECT_EQ(Stored(std::chrono::hours(9 * 24)).size(), 2U);
}

TEST_P(EventStoreOnEveryDatabase, KnowsASourceByItsName) {
  EventsUnderTest events(address_);
  events.Start();
  events.Write({Said("ci1", 0), Said("gfz1", 1)});
  EventsUnderTest turned(address_, {}, {"another", "centre"});
  turned.Start();
  EXPECT_EQ(turned.Records(), std::vector<EventRecord>{Said("gfz1", 1)});
}

TEST_P(EventStoreOnEveryDatabase, DeletesWhatIsTooOldWithItsRevisions) {
  EventsUnderTest events(address_, {.days = 30});
  events.Start();
  events.Write({SaidAt("a", start_of_test - 29 * one_day), Said("b")}, start_of_test);
  EventRecord revised = SaidAt("a", start_of_test - 29 * one_day);
  revised.seen += 1;
  events.Write({revised});
  EXPECT_EQ(Count("revision"), 1);
  events.SetTime(start_of_test + one_day);
  events.Write({Said("c")}, start_of_test + one_day);
  events.Write({Said("d")});
  EXPECT_EQ(Count("event"), 4) << "exactly thirty days";
  events.SetTime(start_of_test + one_day + 1);
  events.Write({Said("e")}, start_of_test + one_day + 1);
  EXPECT_TRUE(WaitFor([this] { return Count("event") == 4 && Count("revision") == 0; }));
}

TEST_P(EventStoreOnEveryDatabase, DeletesNothingByAClockThatIsYearsAhead) {
  EventsUnderTest events(address_, {.days = 30});
  events.Start();
  events.SetTime(start_of_test + 1'000 * one_day);
  events.Write({Said("a")}, start_of_test);
  // What is deleted after a write is deleted before the next one.
  events.Write({Said("b")}, start_of_test);
  EXPECT_EQ(Count("event"), 2);
}

TEST_P(EventStoreOnEveryDatabase, DeletesAPortionAtATime) {
  std::vector<EventRecord> records;
  for (int i = 0; i < 11'000; ++i)
    records.push_back(SaidAt(QString("e%1").arg(i), start_of_test - 20 * one_day + i));
  const auto revise = [&records] {
    for (EventRecord &record : records)
      ++record.seen;
  };
  EventsUnderTest events(address_);
  events.Start();
  for (int i = 0; i < 2; ++i, revise())
    events.Write(records, start_of_test);
  ASSERT_EQ(Count("event"), 11'000);
  ASSERT_EQ(Count("revision"), 11'000);
  const auto delete_some = [this](const EventRetention &retention) {
    Database database(address_);
    database.Open();
    return DeleteSome(database, retention, start_of_test, true);
  };
  const EventRetention few = {.events = 500, .revisions = 500};
  for (const int left : {6'000, 1'000, 500}) {
    EXPECT_EQ(delete_some(few), left != 500);
    EXPECT_EQ(Count("event"), left);
    EXPECT_EQ(Count("revision"), left);
  }

  revise();
  events.Write(records, start_of_test);
  ASSERT_EQ(Count("event"), 11'000);
  EventsUnderTest strict(address_, {.days = 10});
  strict.Start();
  strict.Write({Said("new")}, start_of_test);
  EXPECT_TRUE(WaitFor([this] { return Count("event") == 1 && Count("revision") == 0; }));
}

TEST_P(EventStoreOnEveryDatabase, KeepsNoRevisionOfAnEventThatDoesNotChange) {
  EventsUnderTest events(address_);
  events.Start();
  events.Write({Said("a"), Said("b"), Said("c", 0, 3.0, start_of_test + 2)});
  events.Write({Said("a"), Said("b", 0, 3.0, start_of_test + 1), Said("c", 0, 2.0, start_of_test + 1)});
  Database database(address_);
  database.Open();
  EXPECT_EQ(Count("revision"), 1);
  EXPECT_EQ(database.Row("select id from revision").value(0).toByteArray(), "b");
}

TEST_P(EventStoreOnEveryDatabase, ReplacesWhatAClockThatWasAheadHasLeft) {
  {
    EventsUnderTest ahead(address_);
    ahead.SetTime(start_of_test + 21 * one_day);
    ahead.Start();
    ahead.Write({Said("ci1", 0, 2.0, start_of_test + 21 * one_day)}, start_of_test + 21 * one_day);
  }
  EventsUnderTest events(address_);
  events.Start();
  EXPECT_EQ(events.TimeOfData(), start_of_test);
  ASSERT_EQ(events.Records().size(), 1U);
  EXPECT_EQ(events.Records()[0].seen, start_of_test);
  events.Write({Said("ci1", 0, 3.0, start_of_test + 1)}, start_of_test + 1);
  EXPECT_EQ(Stored(), (std::vector<EventRecord>{Said("ci1", 0, 3.0, start_of_test + 1)}));
  EXPECT_EQ(Count("revision"), 1);
  EventsUnderTest other(address_);
  other.Start();
  EXPECT_EQ(other.TimeOfData(), start_of_test + 1);
}

TEST_P(EventStoreOnEveryDatabase, SaysWhatAStoreLacks) {
  {
    EventsUnderTest events(address_);
    events.Start();
    events.Write({Said("before")});
  }
  {
    Database database(address_);
    database.Open();
    database.Run("delete from state");
  }
  EventsUnderTest events(address_, {}, {"survey", "centre"}, std::chrono::milliseconds(30));
  events.store().Start(std::chrono::hours(1));
  EXPECT_TRUE(WaitFor([&] { return !events.Lines().isEmpty(); }));
  EXPECT_TRUE(events.Lines().value(0).contains("its table \"state\" is empty")) << events.Lines()[0].toStdString();
  events.WriteLater({Said("after")});
  EXPECT_FALSE(events.store().WaitUntilWritten(100));
}

TEST(EventTables, AreReadByTheIndexThatFits) {
  const QTemporaryDir folder;
  const StoreAddress address = {.file = folder.filePath("events.sqlite")};
  {
    EventsUnderTest events(address);
    events.Start();
    events.Write({Said("a")});
  }
  Database database(address);
  database.Open();
  const auto plan = [&database](const QString &query, const QVariantList &values) {
    return database.Row("explain query plan " + query, values).value(3).toString();
  };
  const QString first = plan(QueryOfEventsSince(), {0});
  EXPECT_TRUE(first.contains("event_origin_time")) << first.toStdString();
  const QString later = plan(QueryOfChangesAfter(), {0, 0});
  EXPECT_TRUE(later.contains("event_changed")) << later.toStdString();
}

TEST_P(EventStoreOnEveryDatabase, DeletesTheOldestWhenThereAreTooMany) {
  EventsUnderTest events(address_, {.events = 5, .revisions = 3, .changes_between_checks = 4});
  events.Start();
  for (int i = 0; i < 20; ++i)
    events.Write({SaidAt(QString("e%1").arg(i, 2, 10, QChar('0')), start_of_test - one_hour + i * one_minute)},
                 start_of_test);
  EXPECT_GE(Count("event"), 5);
  EXPECT_LE(Count("event"), 5 + 5);
  EXPECT_EQ(Stored().back().event.id, "e19");
  for (int i = 0; i < 20; ++i)
    events.Write({Said("e19", 0, 3, start_of_test + 1 + i)});
  EXPECT_GE(Count("revision"), 3);
  EXPECT_LE(Count("revision"), 3 + 5);
}

TEST_P(EventStoreOnEveryDatabase, KeepsWhatComesWhileItIsOfANewerVersionAndWritesItLater) {
  const QString newer = QString::number(events_schema.newest + 1);
  {
    EventsUnderTest events(address_);
    events.Start();
    events.Write({Said("before")});
  }
  const auto set_version = [this](const QString &number) {
    Database database(address_);
    database.Open();
    database.Run("update version set number = " + number);
  };
  set_version(newer);
  EventsUnderTest events(address_, {}, {"survey", "centre"}, std::chrono::milliseconds(30));
  events.store().Start(std::chrono::hours(8 * 24));
  EXPECT_TRUE(WaitFor([&] { return events.Leads() == true; })) << "the feeds are asked all the same";
  events.WriteLater({Said("meanwhile")});
  EXPECT_TRUE(WaitFor([&] { return !events.store().Works(); }));
  EXPECT_FALSE(events.store().WaitUntilWritten(100));
  ASSERT_EQ(events.Lines().size(), 1);
  EXPECT_TRUE(events.Lines()[0].contains("created by a newer borvane-mirror (version " + newer))
      << events.Lines()[0].toStdString();

  set_version(QString::number(events_schema.newest));
  EXPECT_TRUE(events.store().WaitUntilWritten(60'000));
  EXPECT_TRUE(WaitFor([&] { return events.Reads() > 0 && events.Records().size() == 2; }))
      << "and reads what was there";
  EXPECT_EQ(Stored().size(), 2U);
  EXPECT_TRUE(WaitFor([&] { return events.Lines().size() == 2; }));
}

}  // namespace
}  // namespace borvane::mirror
