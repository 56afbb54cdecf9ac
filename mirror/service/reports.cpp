#include "service/reports.h"

#include <QByteArrayList>
#include <algorithm>
#include <limits>

namespace borvane::mirror {

void Reports::NoteClient(Database &database, const QByteArray &macid, const QByteArray &version, qint64 now) {
  database.Run(
      "insert into client (macid, version, seen, runs) values (?, ?, ?, 0) "
      "on conflict (macid) do update set version = excluded.version, seen = excluded.seen",
      {macid, version, now});
  EnforceTotals(database);
}

void Reports::CountRun(Database &database, const QByteArray &macid) {
  database.Run(
      "insert into client (macid, version, seen, runs) values (?, ?, 0, 1) "
      "on conflict (macid) do update set runs = client.runs + 1",
      {macid, QByteArray("")});
  EnforceTotals(database);
}

qint64 Reports::ClientsSeen(Database &database, qint64 from, qint64 to) {
  return database.Row("select count(*) from client where seen between ? and ?", {from, to}).at(0).toLongLong();
}

void Reports::AddReport(Database &database, const QByteArray &map, const QByteArray &record, qint64 now) {
  const QVariantList row = database.Row(
      "insert into map (name, reports, reported) values (?, 1, ?) "
      "on conflict (name) do update set reports = map.reports + 1, reported = excluded.reported returning id, reports",
      {map, now});
  const QVariant &id = row.at(0);
  const qint64 number = row.at(1).toLongLong();
  database.Run("insert into report (map, number, received, record) values (?, ?, ?, ?)", {id, number, now, record});
  database.Run("delete from report where map = ? and number <= ?", {id, number - limits_.reports_of_map});
  EnforceTotals(database);
}

void Reports::AddDetail(Database &database, const QByteArray &map, const QByteArray *zip, const QByteArray &record,
                        qint64 now) const {
  const QVariantList row =
      database.Row("insert into detail (received, map, zip, record) values (?, ?, ?, ?) returning id",
                   {now, map, zip == nullptr ? QVariant() : QVariant(*zip), record});
  database.Run("delete from detail where id <= ?", {row.at(0).toLongLong() - limits_.details});
}

QByteArray Reports::ReportsOf(Database &database, const QByteArray &map) const {
  QByteArrayList records;
  qsizetype size = 0;
  const auto take = [&](const QSqlQuery &row) {
    QByteArray record = row.value(0).toByteArray();
    size += record.size() + 1;
    if (size > limits_.answer)
      return false;
    records.append(std::move(record));
    return true;
  };
  // A server sends a result whole, so that the statement has to bound it. On a file that takes several times as long.
  if (database.address().IsFile())
    database.ForEachRow(
        "select record from report where map = (select id from map where name = ?) order by number desc", {map}, take);
  else
    database.ForEachRow(
        "select record from (select number, record, sum(length(record) + 1) over (order by number desc) as size from "
        "report where map = (select id from map where name = ?)) as newest where size <= ? order by number desc",
        {map, limits_.answer}, take);
  std::reverse(records.begin(), records.end());
  return records.isEmpty() ? QByteArray() : records.join('\n') + '\n';
}

void Reports::EnforceTotals(Database &database) {
  if (--changes_until_check_ > 0)
    return;
  changes_until_check_ = limits_.changes_between_checks;

  database.Run(
      "delete from client where macid in (select macid from client order by seen desc, macid desc limit ? offset ?)",
      {std::numeric_limits<int>::max(), limits_.clients});

  // The maps for which there is no room after those with later reports.
  database.Run(
      "delete from map where id in (select id from (select id, sum(case when reports < ? then reports else ? end) over "
      "(order by reported desc, id desc) as kept from map) as by_time where kept > ?)",
      {limits_.reports_of_map, limits_.reports_of_map, limits_.reports});
}

}  // namespace borvane::mirror
