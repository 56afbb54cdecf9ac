#include <latch>
#include <thread>
#include <vector>

#include "databases.h"
#include "service/store.h"

// Several mirrors at one store.

namespace borvane::mirror {
namespace {

class SharingOnEveryDatabase : public OnEveryDatabase {};
INSTANTIATE_TEST_SUITE_P(Sharing, SharingOnEveryDatabase,
                         testing::Values(DatabaseKind::SQLite, DatabaseKind::PostgreSQL), KindName);

/// Does the changes in a transaction of their own.
void Change(Store &store, const std::function<void()> &changes) {
  store.Begin();
  changes();
  store.Commit();
}

/// Lets `count` mirrors open the store at the same moment and do the work; it gets the mirror's number.
void Together(int count, const StoreAddress &address, const std::function<void(Store &, int)> &work) {
  std::latch start(count);
  std::vector<std::thread> threads;
  for (int number = 0; number < count; ++number)
    threads.emplace_back([&, number] {
      Store store(address);
      start.arrive_and_wait();
      try {
        store.Open();
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
  Store store(address);
  store.Open();
  return store.Reports(map);
}

TEST_P(SharingOnEveryDatabase, BeginsWithManyMirrorsAtTheSameTime) {
  for (int round = 0; round < 10; ++round) {
    const EmptyDatabase empty(GetParam());
    Together(6, empty.Address(), [](Store &store, int) { Change(store, [&store] { store.AddReport("A", "x", 1); }); });
    EXPECT_EQ(Reports(empty.Address(), "A"), QByteArray("x\n").repeated(6));
  }
}

TEST_P(SharingOnEveryDatabase, TakesReportsOfTheSameMapsInAnyOrder) {
  constexpr int rounds = 40;
  constexpr int maps = 6;
  Store(database_.Address()).Open();
  const auto report = [](Store &store, const QByteArray &map) {
    store.AddReport(map, "x", 1);
    store.NoteClient(map, "235", 1);
  };
  Together(2, database_.Address(), [&](Store &store, int number) {
    for (int round = 0; round < rounds; ++round)
      Change(store, [&] {
        for (int map = 0; map < maps; ++map)
          report(store, QByteArray::number(number == 0 ? map : maps - 1 - map));
      });
  });
  for (int map = 0; map < maps; ++map)
    EXPECT_EQ(Reports(database_.Address(), QByteArray::number(map)), QByteArray("x\n").repeated(2 * rounds));
}

TEST(SharingOnPostgreSQL, DropsNoMapThatIsReportedOfAtTheSameTime) {
  const EmptyDatabase empty(DatabaseKind::PostgreSQL);
  const StoreLimits limits = {.reports = 3, .changes_between_checks = 1};
  Store store(empty.Address(), limits);
  store.Open();
  Change(store, [&] {
    for (const char *map : {"first", "second", "third"})
      store.AddReport(map, "before", 1);
  });

  // The other mirror's report leaves no room for the map without reports for the longest time: no longer the first.
  store.Begin();
  store.AddReport("first", "meanwhile", 3);
  std::thread other([&] {
    Store of_other(empty.Address(), limits);
    of_other.Open();
    Change(of_other, [&] { of_other.AddReport("fourth", "new", 4); });
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  store.Commit();
  other.join();
  EXPECT_EQ(store.Reports("fourth"), "new\n");
  EXPECT_EQ(store.Reports("first"), "before\nmeanwhile\n");
  EXPECT_EQ(store.Reports("third"), "");
}

}  // namespace
}  // namespace borvane::mirror
