#include "live/event_store.h"

#include <QEventLoop>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <span>

namespace borvane::mirror {

namespace {

constexpr qint64 ms_of_store_day = 24 * 60 * 60'000;

/// How long a job may take until the store counts as silent. A whole week's feed over a slow line is one job.
constexpr int store_timeout_ms = 20'000;

/// How many records may wait for a store that does not work. The oldest events are given up beyond.
constexpr std::size_t most_waiting = 500'000;

/// How many rows one statement writes: as many as there are for the largest number first. Each is a text of its own.
constexpr std::array<std::size_t, 3> rows_of_statement = {128, 16, 1};

/// The lock that a server's session holds whose mirror leads: two numbers of our own.
constexpr const char *leader_lock = "1651470966, 1";

/// After how much silence the server ends the leader's session, and with it the lock. The leader asks each second.
constexpr const char *longest_silence = "30000";

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

/// Keeps the rows' present state as a revision. What was written already, by a commit whose answer was lost, is none.
void KeepRevisions(Database &database, const QByteArray &source, std::span<const EventRecord *const> rows) {
  qint64 seen = 0;
  for (const EventRecord *row : rows)
    seen = std::max(seen, row->seen);
  QVariantList values = {source, seen};
  for (const EventRecord *row : rows)
    values.append(row->event.id.toUtf8());
  database.Run(QString("insert into revision (%1) select %1 from event where source = ? and seen < ? and id in (%2)")
                   .arg(event_columns, Repeated("?", rows.size())),
               values);
}

/// Writes the rows over those of an earlier text.
void PutRows(Database &database, const QByteArray &source, std::span<const EventRecord *const> rows, qint64 number) {
  static const QString row_form = '(' + Repeated("?", 15) + ')';
  QStringList changes;
  for (const QString &column : QString(event_columns).split(", ") + QStringList("changed"))
    if (column != "source" && column != "id")
      changes.append(column + " = excluded." + column);
  QVariantList values;
  for (const EventRecord *row : rows)
    values += ValuesOf(*row, source, number);
  database.Run(QString("insert into event (%1, changed) values %2 on conflict (source, id) do update set %3 "
                       "where event.seen <= excluded.seen")
                   .arg(event_columns, Repeated(row_form, rows.size()), changes.join(", ")),
               values);
}

/// Writes records of one source.
void PutRecords(Database &database, const QByteArray &source, std::span<const EventRecord *const> records,
                qint64 number) {
  for (const std::size_t count : rows_of_statement)
    for (; records.size() >= count; records = records.subspan(count)) {
      KeepRevisions(database, source, records.first(count));
      PutRows(database, source, records.first(count), number);
    }
}

/// Deletes what is too old. What is too much is counted only now and then.
void Retain(Database &database, const EventRetention &retention, qint64 now, bool counts) {
  const qint64 since = now - retention.days * ms_of_store_day;
  database.Run("delete from revision where origin_time < ?", {since});
  database.Run("delete from event where origin_time < ?", {since});
  if (!counts)
    return;
  database.Run("delete from revision where number <= (select max(number) from revision) - ?", {retention.revisions});
  database.Run(
      "delete from event where origin_time <= (select origin_time from event order by origin_time desc limit 1 "
      "offset ?)",
      {retention.events});
}

/// Whether this session holds the leader's lock, by now.
bool TakesTheLead(Database &database) {
  constexpr int has_begun = 1;
  const int state =
      database
          .Row(QString("select case when exists (select 1 from pg_locks where locktype = 'advisory' and granted and "
                       "pid = pg_backend_pid() and (classid::bigint, objid::bigint, objsubid) = (%1, 2)) then 2 "
                       "when pg_try_advisory_lock(%1) then 1 else 0 end")
                   .arg(leader_lock))
          .at(0)
          .toInt();
  // Servers before version 14 lack it; there a mirror that is frozen goes on to lead.
  if (state == has_begun)
    database.Run(QString("select set_config(name, '%1', false) from pg_settings where name = 'idle_session_timeout'")
                     .arg(longest_silence));
  return state != 0;
}

/// Lets events run until it is so, or the time is up.
bool RunUntil(const std::function<bool()> &is_so, int milliseconds) {
  QTimer end;
  end.setSingleShot(true);
  end.start(milliseconds);
  QEventLoop loop;
  while (!is_so() && end.isActive())
    loop.processEvents(QEventLoop::WaitForMoreEvents);
  return is_so();
}

}  // namespace

/// What is written in one transaction.
struct EventStore::Batch {
  std::vector<EventRecord> records;  ///< in the order of their sources
  qint64 time_of_data = 0;
  bool counts = false;  ///< whether to look how many events there are
};

StoreAddress EventStoreAddress(const StoreAddress &service) {
  StoreAddress address = service;
  address.schema = "borvane_events";
  if (service.IsFile()) {
    const QFileInfo file(service.file);
    address.file = file.path() + '/' + file.completeBaseName() + "-events.sqlite";
  }
  return address;
}

EventStore::EventStore(const StoreAddress &address, QStringList sources, Settings settings, Callbacks callbacks)
    : sources_(std::move(sources)),
      settings_(std::move(settings)),
      callbacks_(std::move(callbacks)),
      is_shared_(!address.IsFile()),
      store_(address, events_schema, callbacks_.log, store_timeout_ms) {
  for (QTimer *timer : {&retry_timer_, &patience_timer_})
    timer->setSingleShot(true);
  look_timer_.setInterval(settings_.timing.look_interval);
  retry_timer_.setInterval(settings_.timing.retry_interval);
  patience_timer_.setInterval(settings_.timing.patience);
  connect(&look_timer_, &QTimer::timeout, this, [this] { Read(); });
  connect(&retry_timer_, &QTimer::timeout, this, [this] {
    if (!is_read_)
      Read();
    WriteWhatWaits();
  });
  connect(&patience_timer_, &QTimer::timeout, this, [this] { Lead(true); });
}

void EventStore::Start(std::chrono::milliseconds span) {
  span_ = span;
  if (is_shared_) {
    look_timer_.start();
    patience_timer_.start();
  }
  Read();
}

void EventStore::Read() {
  if (is_reading_)
    return;
  is_reading_ = true;
  const auto found = std::make_shared<Found>();
  const qint64 since = settings_.clock() - span_.count();
  const auto work = [found, since, number = number_, identity = identity_, is_first = !is_read_, sources = sources_,
                     is_shared = is_shared_](Database &database) {
    *found = {};
    found->leads = !is_shared || TakesTheLead(database);
    found->exists = true;
    const QVariantList state = database.Row("select identity, number, time_of_data from state");
    found->identity = state.at(0).toByteArray();
    found->number = state.at(1).toLongLong();
    found->time_of_data = state.at(2).toLongLong();
    const bool is_same = found->identity == identity;
    if (is_same && found->number == number && !is_first)
      return QByteArray("read");
    const auto take = [&](const QSqlQuery &row) {
      // Not that of a source that is no longer configured.
      const qsizetype source = sources.indexOf(QString::fromUtf8(row.value(0).toByteArray()));
      if (source >= 0)
        found->records.push_back(RecordOf(row, static_cast<int>(source)));
      return true;
    };
    // The plus keeps SQLite to the index of what is asked for by the other condition; the wrong one reads a whole year.
    const QString statement = QString("select %1 from event where ").arg(event_columns);
    if (is_same)
      database.ForEachRow(statement + "changed > ? and +origin_time >= ?", {number, since}, take);
    else
      database.ForEachRow(statement + "origin_time >= ?", {since}, take);
    return QByteArray("read");
  };
  store_.Submit(Access::Read, work, [this, found](const std::optional<QByteArray> &result) {
    is_reading_ = false;
    OnOutcome(result.has_value());
    OnRead(result.has_value(), *found);
  });
}

void EventStore::OnRead(bool has_worked, const Found &found) {
  if (!has_worked) {
    if (!is_shared_)
      Lead(true);
    return;
  }
  const bool is_first = !is_read_;
  const bool is_another = identity_ && found.exists && *identity_ != found.identity;
  is_read_ = true;
  if (found.exists) {
    identity_ = found.identity;
    number_ = found.number;
  }
  if (is_first || !found.records.empty() || found.time_of_data > time_of_data_) {
    time_of_data_ = std::max(time_of_data_, found.time_of_data);
    callbacks_.take(found.records, found.time_of_data);
  }
  if (is_another)
    Write(callbacks_.everything(), time_of_data_);
  patience_timer_.stop();
  Lead(found.leads);
}

void EventStore::Write(const std::vector<EventRecord> &records, qint64 time_of_data) {
  for (const EventRecord &record : records)
    waiting_[{record.source, record.event.id}] = record;
  while (waiting_.size() > most_waiting)
    waiting_.erase(std::min_element(waiting_.begin(), waiting_.end(), [](const auto &a, const auto &b) {
      return a.second.event.origin_time < b.second.event.origin_time;
    }));
  has_new_time_ = has_new_time_ || time_of_data > time_of_data_;
  time_of_data_ = std::max(time_of_data_, time_of_data);
  if (!retry_timer_.isActive())
    WriteWhatWaits();
}

std::size_t EventStore::Unwritten() const { return waiting_.size() + (under_way_ ? under_way_->records.size() : 0); }

void EventStore::WriteWhatWaits() {
  if (under_way_ || (waiting_.empty() && !has_new_time_))
    return;
  const auto batch = std::make_shared<Batch>();
  for (auto &[key, record] : waiting_)
    batch->records.push_back(std::move(record));
  waiting_.clear();
  batch->time_of_data = time_of_data_;
  has_new_time_ = false;
  changes_until_check_ -= static_cast<int>(batch->records.size());
  batch->counts = changes_until_check_ <= 0;
  if (batch->counts)
    changes_until_check_ = settings_.retention.changes_between_checks;
  under_way_ = batch;

  const auto found = std::make_shared<Found>();
  const auto work = [batch, found, retention = settings_.retention, now = settings_.clock(),
                     sources = sources_](Database &database) {
    const QVariantList state = database.Row("select identity, number from state");
    *found = {.exists = true, .identity = state.at(0).toByteArray(), .number = state.at(1).toLongLong(), .records = {}};
    const qint64 number = found->number + 1;
    database.Run("update state set number = ?, time_of_data = case when time_of_data < ? then ? else time_of_data end",
                 {number, batch->time_of_data, batch->time_of_data});
    std::vector<const EventRecord *> of_source;
    for (qsizetype source = 0; source < sources.size(); ++source) {
      of_source.clear();
      for (const EventRecord &record : batch->records)
        if (record.source == source)
          of_source.push_back(&record);
      PutRecords(database, sources[source].toUtf8(), of_source, number);
    }
    Retain(database, retention, now, batch->counts);
    return QByteArray("written");
  };
  store_.Submit(Access::Write, work, [this, batch, found](const std::optional<QByteArray> &result) {
    under_way_.reset();
    OnOutcome(result.has_value());
    if (result)
      OnWritten(*found);
    else
      OnNotWritten(*batch);
  });
}

void EventStore::OnWritten(const Found &found) {
  const bool is_as_known = identity_ ? *identity_ == found.identity && number_ == found.number : found.number == 0;
  if (is_as_known) {
    identity_ = found.identity;
    number_ = found.number + 1;
  } else {
    // Another mirror has written, or this is another store.
    Read();
  }
  WriteWhatWaits();
}

void EventStore::OnNotWritten(const Batch &batch) {
  for (const EventRecord &record : batch.records)
    waiting_.try_emplace({record.source, record.event.id}, record);
  has_new_time_ = true;
  retry_timer_.start();
}

void EventStore::OnOutcome(bool has_worked) {
  works_ = has_worked;
  if (has_worked)
    return;
  retry_timer_.start();
  // A leader goes on to lead.
  if (is_shared_ && !leads_.value_or(false) && !patience_timer_.isActive())
    patience_timer_.start();
}

void EventStore::Lead(bool leads) {
  if (leads_ == leads)
    return;
  leads_ = leads;
  callbacks_.lead(leads);
}

bool EventStore::WaitUntilRead(int milliseconds) const {
  return RunUntil([this] { return is_read_; }, milliseconds);
}

bool EventStore::WaitUntilWritten(int milliseconds) const {
  return RunUntil([this] { return waiting_.empty() && !has_new_time_ && !under_way_; }, milliseconds);
}

}  // namespace borvane::mirror
