#include "service/reports.h"

#include <QFile>

#include "support/mirror/databases.h"
#include "support/mirror/report_store.h"

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

class ReportsOnEveryDatabase : public OnEveryDatabase {
 protected:
  /// A store that keeps less than a real one.
  ReportStore Small(RetentionLimits limits) { return ReportStore(database_.Address(), limits); }
};
INSTANTIATE_TEST_SUITE_P(Reports, ReportsOnEveryDatabase,
                         testing::Values(DatabaseKind::SQLite, DatabaseKind::PostgreSQL), KindName);

TEST_P(ReportsOnEveryDatabase, GivesTheReportsOfAMapOldestFirst) {
  ReportStore store(database_.Address());
  store.Change([&] {
    store.AddReport("Parkfield, CA", "one", 1);
    store.AddReport("Hollister, CA", "two", 2);
    store.AddReport("Parkfield, CA", "", 3);
    store.AddReport("Parkfield, CA", "one", 2);
    store.AddReport("", "nowhere", 3);
  });
  EXPECT_EQ(store.ReportsOf("Parkfield, CA"), "one\n\none\n");
  EXPECT_EQ(store.ReportsOf("Hollister, CA"), "two\n");
  EXPECT_EQ(store.ReportsOf(""), "nowhere\n");
  EXPECT_EQ(store.ReportsOf("parkfield, ca"), "");
}

TEST_P(ReportsOnEveryDatabase, KeepsEveryByte) {
  const QByteArray any = AnyByte();
  ReportStore store(database_.Address());
  store.Change([&] {
    store.AddReport(any, any + any, 1);
    store.NoteClient(any.first(60), any.last(60), 5);
  });
  EXPECT_EQ(store.ReportsOf(any), any + any + '\n');
  EXPECT_EQ(store.ClientsSeen(5, 5), 1);
}

TEST_P(ReportsOnEveryDatabase, TakesTextForValuesOnly) {
  const QByteArray evil = "'; drop table report; --\\";
  ReportStore store(database_.Address());
  store.Change([&] { store.AddReport(evil, evil + '"', 1); });
  EXPECT_EQ(store.ReportsOf(evil), evil + "\"\n");
}

TEST_P(ReportsOnEveryDatabase, KeepsOnlyTheNewestReportsOfAMap) {
  ReportStore store = Small({.reports_of_map = 3});
  store.Change([&] {
    store.AddReport("B", "b", 1);
    for (const char *record : {"1", "2", "3", "4", "5"})
      store.AddReport("A", record, 1);
  });
  EXPECT_EQ(store.ReportsOf("A"), "3\n4\n5\n");
  EXPECT_EQ(store.ReportsOf("B"), "b\n");
}

TEST_P(ReportsOnEveryDatabase, GivesTheNewestReportsThatFitIntoAnAnswer) {
  ReportStore store = Small({.answer = 8});
  store.Change([&] {
    for (const char *record : {"12", "345", "67", ""})
      store.AddReport("A", record, 1);
  });
  EXPECT_EQ(store.ReportsOf("A"), "345\n67\n\n");
}

TEST_P(ReportsOnEveryDatabase, DropsTheMapsWithoutReportsForTheLongestTime) {
  ReportStore store = Small({.reports_of_map = 2, .reports = 5, .changes_between_checks = 1});
  store.Change([&] {
    store.AddReport("A", "a1", 1);
    store.AddReport("B", "b1", 2);
    store.AddReport("C", "c1", 3);
    store.AddReport("A", "a2", 4);
    store.AddReport("C", "c2", 5);
  });
  EXPECT_EQ(store.ReportsOf("B"), "b1\n") << "five reports have room";
  store.Change([&] { store.AddReport("D", "d1", 6); });
  EXPECT_EQ(store.ReportsOf("B"), "");
  EXPECT_EQ(store.ReportsOf("A"), "a1\na2\n");
  EXPECT_EQ(store.ReportsOf("C"), "c1\nc2\n");
  EXPECT_EQ(store.ReportsOf("D"), "d1\n");
  Database database(database_.Address());
  database.Open();
  EXPECT_EQ(database.Row("select count(*) from report").at(0).toInt(), 5) << "reports go with their map";
  store.Change([&] { store.AddReport("C", "c3", 7); });
  EXPECT_EQ(store.ReportsOf("A"), "a1\na2\n") << "a report that goes by itself makes room";
}

TEST_P(ReportsOnEveryDatabase, KeepsOnlyTheNewestAnswersThatFollowReports) {
  ReportStore store = Small({.details = 2});
  const QByteArray zip = "95045";
  store.Change([&] {
    store.AddDetail("A", nullptr, "1", 1);
    store.AddDetail("A", &zip, "2", 1);
    store.AddDetail("B", nullptr, "3", 1);
  });
  Database database(database_.Address());
  database.Open();
  EXPECT_EQ(database.Row("select count(*) from detail").at(0).toInt(), 2);
  EXPECT_EQ(database.Row("select count(*) from detail where record = ?", {QByteArray("1")}).at(0).toInt(), 0);
}

TEST_P(ReportsOnEveryDatabase, CountsEachClientOnceByItsLastTime) {
  ReportStore store(database_.Address());
  store.Change([&] {
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

TEST_P(ReportsOnEveryDatabase, DoesNotTakeARunForASight) {
  ReportStore store(database_.Address());
  store.Change([&] {
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

TEST_P(ReportsOnEveryDatabase, ForgetsTheClientsNotSeenForTheLongestTime) {
  ReportStore store = Small({.clients = 2, .changes_between_checks = 1});
  store.Change([&] {
    store.NoteClient("1", "", 10);
    store.NoteClient("2", "", 20);
    store.NoteClient("1", "", 30);
    store.NoteClient("3", "", 40);
  });
  EXPECT_EQ(store.ClientsSeen(0, 100), 2);
  EXPECT_EQ(store.ClientsSeen(20, 20), 0);
}

TEST_P(ReportsOnEveryDatabase, ForgetsTheClientsThatOnlyRanFirst) {
  ReportStore store = Small({.clients = 3, .changes_between_checks = 1});
  store.Change([&] {
    store.NoteClient("seen", "", 10);
    for (int run = 0; run < 10; ++run)
      store.CountRun(QByteArray::number(run));
    store.NoteClient("seen later", "", 20);
  });
  EXPECT_EQ(store.ClientsSeen(1, 100), 2);
  EXPECT_EQ(store.ClientsSeen(0, 0), 1);
}

TEST_P(ReportsOnEveryDatabase, HoldsWhatWasCommittedWhenItIsOpenedAgain) {
  ReportStore store(database_.Address());
  store.Change([&] { store.AddReport("A", "kept", 1); });
  store.Begin();
  store.AddReport("A", "taken back", 2);
  store.Close();
  ReportStore again(database_.Address());
  again.Open();
  EXPECT_EQ(again.ReportsOf("A"), "kept\n");
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

TEST_P(ReportsOnEveryDatabase, FetchesNoMoreThanItGives) {
  ReportStore store = Small({.answer = 100'000});
  store.Change([&] {
    for (int i = 0; i < 600; ++i)
      store.AddReport("A", QByteArray(60'000, 'x'), 1);
  });
  EXPECT_LT(MemoryOf([&] { EXPECT_EQ(store.ReportsOf("A").size(), 60'001); }), 10'000'000);
}

}  // namespace
}  // namespace borvane::mirror
