#include "live/event_tables.h"

#include <QSet>
#include <algorithm>
#include <array>
#include <span>

namespace borvane::mirror {

namespace {

constexpr qint64 ms_of_store_day = 24 * 60 * 60'000;

/// How many rows one statement writes: as many as there are for the largest number first. Each is a text of its own.
constexpr std::array<std::size_t, 3> rows_of_statement = {128, 16, 1};

/// How many rows are deleted at once: a server ends a statement that takes some seconds.
constexpr qint64 rows_of_portion = 5'000;

constexpr const char *event_columns =
    "source, id, other_ids, origin_time, updated, seen, gone, latitude, longitude, depth, magnitude, place, network, "
    "kind";

QVariant NumberOrNull(const std::optional<double> &number) { return number ? QVariant(*number) : QVariant(); }

std::optional<double> NumberOrNothing(const QVariant &value) {
  return value.isNull() ? std::nullopt : std::optional(value.toDouble());
}

QVariantList ValuesOf(const EventRecord &record, const QByteArray &source, qint64 number) {
  const Event &event = record.event;
  return {source,
          event.id.toUtf8(),
          record.other_ids.join(',').toUtf8(),
          event.origin_time,
          event.updated,
          record.seen,
          record.is_gone ? 1 : 0,
          event.latitude,
          event.longitude,
          NumberOrNull(event.depth),
          NumberOrNull(event.magnitude),
          event.place.toUtf8(),
          event.network.toUtf8(),
          event.kind.toUtf8(),
          number};
}

EventRecord RecordOf(const QSqlQuery &row, int source) {
  const auto text = [&row](int column) { return QString::fromUtf8(row.value(column).toByteArray()); };
  EventRecord record = {.source = source, .event = {}, .other_ids = text(2).split(',', Qt::SkipEmptyParts)};
  record.seen = row.value(5).toLongLong();
  record.is_gone = row.value(6).toInt() != 0;
  Event &event = record.event;
  event.id = text(1);
  event.origin_time = row.value(3).toLongLong();
  event.updated = row.value(4).toLongLong();
  event.latitude = row.value(7).toDouble();
  event.longitude = row.value(8).toDouble();
  event.depth = NumberOrNothing(row.value(9));
  event.magnitude = NumberOrNothing(row.value(10));
  event.place = text(11);
  event.network = text(12);
  event.kind = text(13);
  return record;
}

/// `text`, `count` times, with a comma between each two.
QString Repeated(const QString &text, std::size_t count) {
  return QStringList(static_cast<qsizetype>(count), text).join(", ");
}

using Rows = std::span<const EventRecord *const>;

/// The ids of the rows that the store has from an earlier text. What was written already, by a commit whose answer was
/// lost, is not among them.
QSet<QByteArray> IdsOfEarlierRows(Database &database, const QByteArray &source, Rows rows, qint64 latest) {
  QHash<QByteArray, qint64> seen;
  QVariantList values = {source};
  for (const EventRecord *row : rows) {
    const QByteArray id = row->event.id.toUtf8();
    seen.insert(id, row->seen);
    values.append(id);
  }
  QSet<QByteArray> ids;
  database.ForEachRow(
      QString("select id, seen from event where source = ? and id in (%1)").arg(Repeated("?", rows.size())), values,
      [&](const QSqlQuery &row) {
        const QByteArray id = row.value(0).toByteArray();
        const qint64 stored = row.value(1).toLongLong();
        if (stored < seen.value(id) || stored > latest)
          ids.insert(id);
        return true;
      });
  return ids;
}

/// Keeps the present state of the rows as revisions.
void KeepRevisions(Database &database, const QByteArray &source, const QSet<QByteArray> &ids, std::size_t most) {
  if (ids.isEmpty())
    return;
  QVariantList values = {source};
  for (const QByteArray &id : ids)
    values.append(id);
  // One statement for whatever number of them: no event has an empty id.
  while (values.size() <= static_cast<qsizetype>(most))
    values.append(QByteArray(""));
  database.Run(QString("insert into revision (%1) select %1 from event where source = ? and id in (%2)")
                   .arg(event_columns, Repeated("?", most)),
               values);
}

/// Writes the rows over those of an earlier text.
void PutRows(Database &database, const QByteArray &source, Rows rows, qint64 number, qint64 latest) {
  static const QString row_form = '(' + Repeated("?", 15) + ')';
  QStringList changes;
  for (const QString &column : QString(event_columns).split(", ") + QStringList("changed"))
    if (column != "source" && column != "id")
      changes.append(column + " = excluded." + column);
  QVariantList values;
  for (const EventRecord *row : rows)
    values += ValuesOf(*row, source, number);
  values.append(latest);
  database.Run(QString("insert into event (%1, changed) values %2 on conflict (source, id) do update set %3 "
                       "where event.seen <= excluded.seen or event.seen > ?")
                   .arg(event_columns, Repeated(row_form, rows.size()), changes.join(", ")),
               values);
}

/// Deletes a portion of the rows of the table whose origin is before `since`. Returns whether there may be more.
bool DeleteSomeBefore(Database &database, const QString &table, qint64 since) {
  const QVariantList last =
      database.Row(QString("select origin_time from %1 where origin_time < ? order by origin_time limit 1 offset %2")
                       .arg(table)
                       .arg(rows_of_portion - 1),
                   {since});
  database.Run(QString("delete from %1 where origin_time < ?").arg(table),
               {last.isEmpty() ? since : last.at(0).toLongLong() + 1});
  return !last.isEmpty();
}

}  // namespace

EventsState ReadState(Database &database) {
  const QVariantList row = database.Row("select identity, number, time_of_data from state");
  if (row.isEmpty())
    throw StoreFailure("its table \"state\" is empty");
  return {
      .identity = row.at(0).toByteArray(), .number = row.at(1).toLongLong(), .time_of_data = row.at(2).toLongLong()};
}

QString QueryOfEventsSince() { return QString("select %1 from event where origin_time >= ?").arg(event_columns); }

QString QueryOfChangesAfter() {
  return QString("select %1 from event where changed > ? and +origin_time >= ?").arg(event_columns);
}

std::vector<EventRecord> ReadRecords(Database &database, const QString &query, const QVariantList &values,
                                     const QStringList &sources) {
  std::vector<EventRecord> records;
  database.ForEachRow(query, values, [&](const QSqlQuery &row) {
    const qsizetype source = sources.indexOf(QString::fromUtf8(row.value(0).toByteArray()));
    if (source >= 0)
      records.push_back(RecordOf(row, static_cast<int>(source)));
    return true;
  });
  return records;
}

void PutRecords(Database &database, const QByteArray &source, const std::vector<const EventRecord *> &records,
                qint64 number, qint64 latest) {
  Rows rows = records;
  for (const std::size_t count : rows_of_statement)
    for (; rows.size() >= count; rows = rows.subspan(count)) {
      KeepRevisions(database, source, IdsOfEarlierRows(database, source, rows.first(count), latest), count);
      PutRows(database, source, rows.first(count), number, latest);
    }
}

bool DeleteSome(Database &database, const EventRetention &retention, qint64 now, bool counts) {
  qint64 since = now - retention.days * ms_of_store_day;
  const bool has_old_revisions = DeleteSomeBefore(database, "revision", since);
  if (counts) {
    const QVariantList surplus =
        database.Row("select origin_time from event order by origin_time desc limit 1 offset ?", {retention.events});
    if (!surplus.isEmpty())
      since = std::max(since, surplus.at(0).toLongLong() + 1);
  }
  const bool has_old_events = DeleteSomeBefore(database, "event", since);
  if (!counts)
    return has_old_revisions || has_old_events;

  const QVariantList numbers = database.Row("select min(number), max(number) from revision");
  const qint64 first = numbers.at(0).toLongLong();
  const qint64 surplus = numbers.at(1).toLongLong() - retention.revisions;
  const qint64 last = std::min(surplus, first + rows_of_portion - 1);
  database.Run("delete from revision where number <= ?", {last});
  return has_old_revisions || has_old_events || (!numbers.at(0).isNull() && last < surplus);
}

}  // namespace borvane::mirror
