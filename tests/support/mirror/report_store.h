#pragma once

#include "service/reports.h"
#include "store/migrations.h"

namespace borvane::mirror {

/// A store of reports on a connection of its own.
class ReportStore {
 public:
  explicit ReportStore(const StoreAddress &address, RetentionLimits limits = {})
      : database_(address), reports_(limits) {}

  bool IsOpen() const { return database_.IsOpen(); }
  void Open() {
    database_.Open();
    MigrateToNewest(database_, reports_schema);
  }
  void Close() { database_.Close(); }
  void Begin() { database_.Begin(); }
  void Commit() { database_.Commit(); }

  void NoteClient(const QByteArray &macid, const QByteArray &version, qint64 now) {
    reports_.NoteClient(database_, macid, version, now);
  }
  void CountRun(const QByteArray &macid) { reports_.CountRun(database_, macid); }
  qint64 ClientsSeen(qint64 from, qint64 to) { return Reports::ClientsSeen(database_, from, to); }
  void AddReport(const QByteArray &map, const QByteArray &record, qint64 now) {
    reports_.AddReport(database_, map, record, now);
  }
  void AddDetail(const QByteArray &map, const QByteArray *zip, const QByteArray &record, qint64 now) {
    reports_.AddDetail(database_, map, zip, record, now);
  }
  QByteArray ReportsOf(const QByteArray &map) { return reports_.ReportsOf(database_, map); }

  /// Makes the changes in a transaction of their own.
  void Change(const std::function<void()> &changes) {
    if (!IsOpen())
      Open();
    Begin();
    changes();
    Commit();
  }

 private:
  Database database_;
  Reports reports_;
};

}  // namespace borvane::mirror
