#include "service/store.h"

#include <QFile>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include "databases.h"

namespace borvane::mirror {
namespace {

/// Every byte that can come in a request line.
QByteArray AnyByte() {
  QByteArray bytes;
  for (int byte = 1; byte < 256; ++byte)
    if (byte != '\n' && byte != '\r')
      bytes.append(static_cast<char>(byte));
  return bytes;
}

class StoreOnEveryDatabase : public OnEveryDatabase {
 protected:
  /// A store that holds less than a real one.
  Store Small(StoreLimits limits) { return Store(database_.Address(), limits); }

  static void Change(Store &store, const std::function<void()> &changes) {
    if (!store.IsOpen())
      store.Open();
    store.Begin();
    changes();
    store.Commit();
  }
};
INSTANTIATE_TEST_SUITE_P(Store, StoreOnEveryDatabase, testing::Values(DatabaseKind::SQLite, DatabaseKind::PostgreSQL),
                         KindName);

TEST_P(StoreOnEveryDatabase, GivesTheReportsOfAMapOldestFirst) {
  Store store(database_.Address());
  Change(store, [&] {
    store.AddReport("Parkfield, CA", "one", 1);
    store.AddReport("Hollister, CA", "two", 2);
    store.AddReport("Parkfield, CA", "", 3);
    store.AddReport("Parkfield, CA", "one", 2);
    store.AddReport("", "nowhere", 3);
  });
  EXPECT_EQ(store.Reports("Parkfield, CA"), "one\n\none\n");
  EXPECT_EQ(store.Reports("Hollister, CA"), "two\n");
  EXPECT_EQ(store.Reports(""), "nowhere\n");
  EXPECT_EQ(store.Reports("parkfield, ca"), "");
}

TEST_P(StoreOnEveryDatabase, KeepsEveryByte) {
  const QByteArray any = AnyByte();
  Store store(database_.Address());
  Change(store, [&] {
    store.AddReport(any, any + any, 1);
    store.NoteClient(any.first(60), any.last(60), 5);
  });
  EXPECT_EQ(store.Reports(any), any + any + '\n');
  EXPECT_EQ(store.ClientsSeen(5, 5), 1);
}

TEST_P(StoreOnEveryDatabase, TakesTextForValuesOnly) {
  const QByteArray evil = "'; drop table report; --\\";
  Store store(database_.Address());
  Change(store, [&] { store.AddReport(evil, evil + '"', 1); });
  EXPECT_EQ(store.Reports(evil), evil + "\"\n");
}

TEST_P(StoreOnEveryDatabase, KeepsOnlyTheNewestReportsOfAMap) {
  Store store = Small({.reports_of_map = 3});
  Change(store, [&] {
    store.AddReport("B", "b", 1);
    for (const char *record : {"1", "2", "3", "4", "5"})
      store.AddReport("A", record, 1);
  });
  EXPECT_EQ(store.Reports("A"), "3\n4\n5\n");
  EXPECT_EQ(store.Reports("B"), "b\n");
}

TEST_P(StoreOnEveryDatabase, GivesTheNewestReportsThatFitIntoAnAnswer) {
  Store store = Small({.answer = 8});
  Change(store, [&] {
    for (const char *record : {"12", "345", "67", ""})
      store.AddReport("A", record, 1);
  });
  EXPECT_EQ(store.Reports("A"), "345\n67\n\n");
}

TEST_P(StoreOnEveryDatabase, DropsTheMapsWithoutReportsForTheLongestTime) {
  Store store = Small({.reports_of_map = 2, .reports = 5, .changes_between_checks = 1});
  Change(store, [&] {
    store.AddReport("A", "a1", 1);
    store.AddReport("B", "b1", 2);
    store.AddReport("C", "c1", 3);
    store.AddReport("A", "a2", 4);
    store.AddReport("C", "c2", 5);
  });
  EXPECT_EQ(store.Reports("B"), "b1\n") << "five reports have room";
  Change(store, [&] { store.AddReport("D", "d1", 6); });
  EXPECT_EQ(store.Reports("B"), "");
  EXPECT_EQ(store.Reports("A"), "a1\na2\n");
  EXPECT_EQ(store.Reports("C"), "c1\nc2\n");
  EXPECT_EQ(store.Reports("D"), "d1\n");
  Database database(database_.Address());
  database.Open();
  EXPECT_EQ(database.Row("select count(*) from report").at(0).toInt(), 5) << "reports go with their map";
  Change(store, [&] { store.AddReport("C", "c3", 7); });
  EXPECT_EQ(store.Reports("A"), "a1\na2\n") << "a report that goes by itself makes room";
}

TEST_P(StoreOnEveryDatabase, KeepsOnlyTheNewestAnswersBehindReports) {
  Store store = Small({.details = 2});
  const QByteArray zip = "95045";
  Change(store, [&] {
    store.AddDetail("A", nullptr, "1", 1);
    store.AddDetail("A", &zip, "2", 1);
    store.AddDetail("B", nullptr, "3", 1);
  });
  Database database(database_.Address());
  database.Open();
  EXPECT_EQ(database.Row("select count(*) from detail").at(0).toInt(), 2);
  EXPECT_EQ(database.Row("select count(*) from detail where record = ?", {QByteArray("1")}).at(0).toInt(), 0);
}

TEST_P(StoreOnEveryDatabase, CountsEachClientOnceByItsLastTime) {
  Store store(database_.Address());
  Change(store, [&] {
    store.NoteClient("1", "235", 10);
    store.NoteClient("2", "235", 20);
    store.NoteClient("1", "236", 30);
    store.NoteClient("", "", 30);
  });
  EXPECT_EQ(store.ClientsSeen(0, 100), 3);
  EXPECT_EQ(store.ClientsSeen(20, 30), 3);
  EXPECT_EQ(store.ClientsSeen(21, 30), 2);
  EXPECT_EQ(store.ClientsSeen(0, 29), 1);
}

TEST_P(StoreOnEveryDatabase, DoesNotTakeARunForASight) {
  Store store(database_.Address());
  Change(store, [&] {
    store.CountRun("1");
    store.NoteClient("2", "235", 20);
    store.CountRun("2");
    store.CountRun("2");
  });
  EXPECT_EQ(store.ClientsSeen(1, 100), 1);
  database_.Execute("create table seen_runs as select sum(runs) as runs from client where seen = 20;\n");
  Database database(database_.Address());
  database.Open();
  EXPECT_EQ(database.Row("select runs from seen_runs").at(0).toInt(), 2);
}

TEST_P(StoreOnEveryDatabase, ForgetsTheClientsNotSeenForTheLongestTime) {
  Store store = Small({.clients = 2, .changes_between_checks = 1});
  Change(store, [&] {
    store.NoteClient("1", "", 10);
    store.NoteClient("2", "", 20);
    store.NoteClient("1", "", 30);
    store.NoteClient("3", "", 40);
  });
  EXPECT_EQ(store.ClientsSeen(0, 100), 2);
  EXPECT_EQ(store.ClientsSeen(20, 20), 0);
}

TEST_P(StoreOnEveryDatabase, ForgetsTheClientsThatOnlyRanFirst) {
  Store store = Small({.clients = 3, .changes_between_checks = 1});
  Change(store, [&] {
    store.NoteClient("seen", "", 10);
    for (int run = 0; run < 10; ++run)
      store.CountRun(QByteArray::number(run));
    store.NoteClient("seen later", "", 20);
  });
  EXPECT_EQ(store.ClientsSeen(1, 100), 2);
  EXPECT_EQ(store.ClientsSeen(0, 0), 1);
}

TEST_P(StoreOnEveryDatabase, HoldsWhatWasCommittedWhenItIsOpenedAgain) {
  Store store(database_.Address());
  Change(store, [&] { store.AddReport("A", "kept", 1); });
  store.Begin();
  store.AddReport("A", "taken back", 2);
  store.Close();
  Store again(database_.Address());
  again.Open();
  EXPECT_EQ(again.Reports("A"), "kept\n");
}

/// The most memory that the work takes at a time, in bytes.
qint64 MemoryOf(const std::function<void()> &work) {
  const auto read = [](const QByteArray &name) {
    QFile status("/proc/self/status");
    EXPECT_TRUE(status.open(QFile::ReadOnly));
    const QByteArray text = status.readAll();
    return text.sliced(text.indexOf(name) + name.size()).trimmed().split(' ')[0].toLongLong() * 1'024;
  };
  QFile reset("/proc/self/clear_refs");
  EXPECT_TRUE(reset.open(QFile::WriteOnly) && reset.write("5") == 1 && reset.flush());
  const qint64 before = read("VmRSS:");
  work();
  return read("VmHWM:") - before;
}

TEST_P(StoreOnEveryDatabase, FetchesNoMoreThanItGives) {
  Store store = Small({.answer = 100'000});
  Change(store, [&] {
    for (int i = 0; i < 600; ++i)
      store.AddReport("A", QByteArray(60'000, 'x'), 1);
  });
  EXPECT_LT(MemoryOf([&] { EXPECT_EQ(store.Reports("A").size(), 60'001); }), 10'000'000);
}

TEST(Database, SaysThatChangesMayBeKeptWhenOnlyTheirEndFailed) {
  const EmptyDatabase empty(DatabaseKind::SQLite);
  Database database(empty.Address());
  database.Open();
  try {
    database.Commit();
    ADD_FAILURE() << "there is nothing to be committed";
  } catch (const StoreFailure &failure) {
    EXPECT_TRUE(failure.MayBeKept());
  }
  try {
    database.Run("insert into nothing values (1)");
    ADD_FAILURE() << "there is no such table";
  } catch (const StoreFailure &failure) {
    EXPECT_FALSE(failure.MayBeKept());
  }
}

TEST(DatabaseOnPostgreSQL, CommitsToTheDiskWhateverTheServerIsSetTo) {
  const EmptyDatabase empty(DatabaseKind::PostgreSQL);
  empty.Execute("set role none; alter database \"" + empty.Address().database + "\" set synchronous_commit = off;\n");
  Database database(empty.Address());
  database.Open();
  EXPECT_EQ(database.Row("show synchronous_commit").at(0).toString(), "on");
  EXPECT_EQ(database.Row("show statement_timeout").at(0).toString(), "5s");
}

TEST(DatabaseOnPostgreSQL, TakesThePortThatThePostgresqlLibraryTakes) {
  const EmptyDatabase empty(DatabaseKind::PostgreSQL);
  StoreAddress address = empty.Address();
  qputenv("PGPORT", QByteArray::number(address.port));
  address.port = -1;
  Database database(address);
  EXPECT_NO_THROW(database.Open());
  qunsetenv("PGPORT");
}

/// The number that an option of the connection to the port has, in this process.
int SocketOption(int port, int level, int option) {
  for (int descriptor = 0; descriptor < 1'024; ++descriptor) {
    sockaddr_in peer = {};
    socklen_t size = sizeof peer;
    if (::getpeername(descriptor, reinterpret_cast<sockaddr *>(&peer), &size) != 0 || ntohs(peer.sin_port) != port)
      continue;
    int value = -1;
    socklen_t value_size = sizeof value;
    EXPECT_EQ(::getsockopt(descriptor, level, option, &value, &value_size), 0);
    return value;
  }
  ADD_FAILURE() << "there is no such connection";
  return -1;
}

TEST(DatabaseOnPostgreSQL, AsksTheServersHostWhetherItIsThereStill) {
  const EmptyDatabase empty(DatabaseKind::PostgreSQL);
  Database database(empty.Address());
  database.Open();
  const int port = empty.Address().port;
  EXPECT_EQ(SocketOption(port, SOL_SOCKET, SO_KEEPALIVE), 1);
  const int seconds = SocketOption(port, IPPROTO_TCP, TCP_KEEPIDLE) +
                      SocketOption(port, IPPROTO_TCP, TCP_KEEPINTVL) * SocketOption(port, IPPROTO_TCP, TCP_KEEPCNT);
  EXPECT_LE(seconds, 10) << "as long as a job may take";
}

}  // namespace
}  // namespace borvane::mirror
