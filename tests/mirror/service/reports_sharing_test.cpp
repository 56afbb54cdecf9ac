#include <latch>
#include <thread>
#include <vector>

#include "support/mirror/databases.h"
#include "support/mirror/report_store.h"

// Several mirrors at one store.

namespace borvane::mirror {
namespace {

class SharingOnEveryDatabase : public OnEveryDatabase {};
INSTANTIATE_TEST_SUITE_P(Sharing, SharingOnEveryDatabase,
                         testing::Values(DatabaseKind::SQLite, DatabaseKind::PostgreSQL), KindName);

/// Does the work. While other mirrors keep a file locked for longer than it is waited for, as on a slow disk, the work
/// fails whole, and is done again.
void DoWhenUnlocked(const std::function<void()> &work) {
  while (true) {
    try {
      return work();
    } catch (const StoreFailure &failure) {
      if (!QByteArray(failure.what()).contains("database is locked"))
        throw;
    }
  }
}

/// Lets `count` mirrors open the store at the same moment and do the work; it gets the mirror's number.
void Together(int count, const StoreAddress &address, const std::function<void(ReportStore &, int)> &work) {
  std::latch start(count);
  std::vector<std::thread> threads;
  for (int number = 0; number < count; ++number)
    threads.emplace_back([&, number] {
      ReportStore store(address);
      start.arrive_and_wait();
      try {
        DoWhenUnlocked([&store] { store.Open(); });
        work(store, number);
      } catch (const StoreFailure &failure) {
        ADD_FAILURE() << failure.what();
      }
    });
  for (std::thread &thread : threads)
    thread.join();
}

/// The reports of the map, read by one more mirror.
QByteArray Reports(const StoreAddress &address, const QByteArray &map) {
  ReportStore store(address);
  store.Open();
  return store.ReportsOf(map);
}

TEST_P(SharingOnEveryDatabase, BeginsWithManyMirrorsAtTheSameTime) {
  for (int round = 0; round < 10; ++round) {
    const EmptyDatabase empty(GetParam());
    Together(6, empty.Address(), [](ReportStore &store, int) {
      DoWhenUnlocked([&store] { store.Change([&store] { store.AddReport("A", "x", 1); }); });
    });
    EXPECT_EQ(Reports(empty.Address(), "A"), QByteArray("x\n").repeated(6));
  }
}

TEST_P(SharingOnEveryDatabase, TakesReportsOfTheSameMapsInAnyOrder) {
  constexpr int rounds = 40;
  constexpr int maps = 6;
  ReportStore(database_.Address()).Open();
  const auto report = [](ReportStore &store, const QByteArray &map) {
    store.AddReport(map, "x", 1);
    store.NoteClient(map, "235", 1);
  };
  Together(2, database_.Address(), [&](ReportStore &store, int number) {
    for (int round = 0; round < rounds; ++round)
      DoWhenUnlocked([&] {
        store.Change([&] {
          for (int map = 0; map < maps; ++map)
            report(store, QByteArray::number(number == 0 ? map : maps - 1 - map));
        });
      });
  });
  for (int map = 0; map < maps; ++map)
    EXPECT_EQ(Reports(database_.Address(), QByteArray::number(map)), QByteArray("x\n").repeated(2 * rounds));
}

TEST(SharingOnPostgreSQL, DropsNoMapThatIsReportedOfAtTheSameTime) {
  const EmptyDatabase empty(DatabaseKind::PostgreSQL);
  const RetentionLimits limits = {.reports = 3, .changes_between_checks = 1};
  ReportStore store(empty.Address(), limits);
  store.Open();
  store.Change([&] {
    for (const char *map : {"first", "second", "third"})
      store.AddReport(map, "before", 1);
  });

  // The other mirror's report leaves no room for the map without reports for the longest time: no longer the first.
  store.Begin();
  store.AddReport("first", "meanwhile", 3);
  std::thread other([&] {
    ReportStore of_other(empty.Address(), limits);
    of_other.Open();
    of_other.Change([&] { of_other.AddReport("fourth", "new", 4); });
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  store.Commit();
  other.join();
  EXPECT_EQ(store.ReportsOf("fourth"), "new\n");
  EXPECT_EQ(store.ReportsOf("first"), "before\nmeanwhile\n");
  EXPECT_EQ(store.ReportsOf("third"), "");
}

}  // namespace
}  // namespace borvane::mirror
