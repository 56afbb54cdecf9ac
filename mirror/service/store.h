#pragma once

#include <QByteArray>

#include "service/database.h"

namespace borvane::mirror {

/// How much a store keeps. What is beyond goes, the oldest first.
struct StoreLimits {
  int reports_of_map = 1'000;  ///< kept reports of one map
  qsizetype answer = 4 << 20;  ///< bytes of the reports of one map that are given at once; the newest ones
  qint64 reports = 100'000;    ///< kept reports in all; the maps go first that had none for the longest time
  qint64 details = 10'000;     ///< kept answers behind felt reports
  qint64 clients = 100'000;    ///< kept clients; those go first that were not seen for the longest time
  int changes_between_checks =
      500;  ///< how often reports and clients in all are looked at; as many more may stand meanwhile
};

/// What the maker's service keeps. Texts are bytes and come back as they went in. Times are in milliseconds since 1970
/// began. Every procedure throws StoreFailure; changes need a transaction around them.
class Store {
 public:
  explicit Store(const StoreAddress &address, StoreLimits limits = {}) : database_(address), limits_(limits) {}

  bool IsOpen() const { return database_.IsOpen(); }

  /// Whether there is something to read: a store in a file begins with the first change.
  bool Exists() const { return database_.Exists(); }

  bool IsWriteProtected() const { return database_.IsWriteProtected(); }

  /// Opens the store and brings its tables up to date.
  void Open();

  /// Opens a store in a file that may not be changed, for a moment: others may be able to change it.
  void OpenToRead();
  void Close() { database_.Close(); }
  void Begin() { database_.Begin(); }
  void Commit() { database_.Commit(); }

  /// Notes that a client was seen.
  void NoteClient(const QByteArray &macid, const QByteArray &version, qint64 now);

  /// Counts a run of a client, seen or not.
  void CountRun(const QByteArray &macid);

  /// The number of clients seen between the two times, both included.
  qint64 ClientsSeen(qint64 from, qint64 to);

  /// Keeps a felt report under its map.
  void AddReport(const QByteArray &map, const QByteArray &record, qint64 now);

  /// Keeps the answers behind a felt report; `zip` is null when they came without a zip code.
  void AddDetail(const QByteArray &map, const QByteArray *zip, const QByteArray &record, qint64 now);

  /// The kept reports of the map, oldest first, each ended by a line feed.
  QByteArray Reports(const QByteArray &map);

 private:
  void CountChange();

  Database database_;
  const StoreLimits limits_;
  int changes_until_check_ = 0;
};

}  // namespace borvane::mirror
