#pragma once

#include <QByteArray>

#include "store/database.h"
#include "store/migrations.h"

namespace borvane::mirror {

/// The tables that Reports works on.
constexpr Schema reports_schema = {.folder = ":/service/schema", .newest = 2};

/// How much is kept. What is beyond is deleted, the oldest first.
struct RetentionLimits {
  int reports_of_map = 1'000;  ///< kept reports of one map
  qsizetype answer = 4 << 20;  ///< bytes of the reports of one map that are returned at once; the newest ones
  qint64 reports = 100'000;    ///< kept reports in all; the maps without a report for the longest time are deleted
  qint64 details = 10'000;     ///< kept details of felt reports
  qint64 clients = 100'000;    ///< kept clients; those not seen for the longest time are deleted
  int changes_between_checks = 500;  ///< how often reports and clients in all are counted; so many more may be kept
};

/// The statements of the maker's service: presence and felt reports. Texts are bytes and are returned unchanged.
/// Times are in milliseconds since 1970 began. Every procedure throws StoreFailure; changes need a transaction around
/// them. One object serves one thread.
class Reports {
 public:
  explicit Reports(RetentionLimits limits = {}) : limits_(limits) {}

  /// Records that a client was seen.
  void NoteClient(Database &database, const QByteArray &macid, const QByteArray &version, qint64 now);

  /// Counts a run of a client, seen or not.
  void CountRun(Database &database, const QByteArray &macid);

  /// The number of clients seen between the two times, both included.
  static qint64 ClientsSeen(Database &database, qint64 from, qint64 to);

  /// Keeps a felt report under its map.
  void AddReport(Database &database, const QByteArray &map, const QByteArray &record, qint64 now);

  /// Keeps the details of a felt report; `zip` is null when they came without a zip code.
  void AddDetail(Database &database, const QByteArray &map, const QByteArray *zip, const QByteArray &record,
                 qint64 now) const;

  /// The kept reports of the map, oldest first, each ended by a line feed.
  QByteArray ReportsOf(Database &database, const QByteArray &map) const;

 private:
  void EnforceTotals(Database &database);

  const RetentionLimits limits_;
  int changes_until_check_ = 0;
};

}  // namespace borvane::mirror
