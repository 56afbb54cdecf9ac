#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <vector>

#include "live/event_record.h"
#include "store/database.h"

namespace borvane::mirror {

/// How much is kept. What is beyond is deleted, the oldest first.
struct EventRetention {
  int days = 400;                      ///< events whose origin is longer ago are deleted, with their revisions
  qint64 events = 1'000'000;           ///< in all; some thousands more may be kept for a while
  qint64 revisions = 2'000'000;        ///< earlier states of events, in all
  int changes_between_checks = 2'000;  ///< how many events are written until the events are counted again
  std::size_t unwritten = 500'000;     ///< in memory, while the store does not work
};

/// The row of the table "state".
struct EventsState {
  QByteArray identity;  ///< of the store: another one has another
  qint64 number = 0;    ///< of its last change
  qint64 time_of_data = 0;
};
EventsState ReadState(Database &database);

/// The query for the events whose origin is not before the first value; and that for those of them, the second value,
/// that changed after the change of the first value. SQLite would take the index of the changes for both.
QString QueryOfEventsSince();
QString QueryOfChangesAfter();

/// The records that a query of the two finds. `sources` are the names of those that are wanted.
std::vector<EventRecord> ReadRecords(Database &database, const QString &query, const QVariantList &values,
                                     const QStringList &sources);

/// Writes records of one source as the change of that number, and keeps the states that they replace as revisions. What
/// the store has from a later text stays, unless that is later than `latest`, which no text can be.
void PutRecords(Database &database, const QByteArray &source, const std::vector<const EventRecord *> &records,
                qint64 number, qint64 latest);

/// Deletes a portion of what is too old at the time `now`, and, if `counts`, of what is too much. Returns whether there
/// may be more of it.
bool DeleteSome(Database &database, const EventRetention &retention, qint64 now, bool counts);

}  // namespace borvane::mirror
