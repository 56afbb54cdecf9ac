#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QStringList>
#include <QTimer>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "live/event_store.h"
#include "support/mirror/feed_samples.h"

namespace borvane::mirror {

/// Lets events run until it is so; false when it is not within a minute.
inline bool WaitFor(const std::function<bool()> &is_so) {
  QTimer looks;
  looks.start(5);
  for (const QDeadlineTimer deadline(60'000); !is_so();) {
    if (deadline.hasExpired())
      return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return true;
}

/// A store of events with shorter times than a mirror's, what it has read, and the lines that it logs.
class EventsUnderTest {
 public:
  /// `address` is that of the events themselves.
  explicit EventsUnderTest(const StoreAddress &address, EventRetention retention = {},
                           const QStringList &sources = {"survey", "centre"},
                           std::chrono::milliseconds takeover_timeout = std::chrono::seconds(60))
      : store_(address, sources,
               {.retention = retention,
                .timing = {.look_interval = std::chrono::milliseconds(20),
                           .retry_interval = std::chrono::milliseconds(20),
                           .takeover_timeout = takeover_timeout},
                .clock = [this] { return now_; }},
               {.take = [this](const std::vector<EventRecord> &records,
                               qint64 time_of_data) { OnTaken(records, time_of_data); },
                .everything =
                    [this] {
                      ++replacements_;
                      return Records();
                    },
                .lead = [this](bool leads) { leads_ = leads; },
                .log = [this](LogLevel, const QString &line) { lines_.append(line); }}) {}

  EventStore &store() { return store_; }

  /// Begins, and waits until the store has been read.
  void Start(std::chrono::milliseconds span = std::chrono::hours(8 * 24)) {
    store_.Start(span);
    EXPECT_TRUE(WaitFor([this] { return reads_ > 0; })) << "the store cannot be read";
  }

  /// Writes records and waits until they are on the disk.
  void Write(const std::vector<EventRecord> &records, qint64 time_of_data = 0) {
    WriteLater(records, time_of_data);
    EXPECT_TRUE(store_.WaitUntilWritten(60'000));
  }

  /// Writes records without waiting; what this mirror knows is the same from now on.
  void WriteLater(const std::vector<EventRecord> &records, qint64 time_of_data = 0) {
    Note(records);
    store_.Write(records, time_of_data);
  }

  /// What this mirror knows, by source and id.
  std::vector<EventRecord> Records() const {
    std::vector<EventRecord> records;
    for (const auto &[key, record] : known_)
      records.push_back(record);
    return records;
  }
  bool Knows(const EventRecord &record) const {
    const auto found = known_.find({record.source, record.event.id});
    return found != known_.end() && found->second == record;
  }

  int Reads() const { return reads_; }
  int Replacements() const { return replacements_; }
  qint64 TimeOfData() const { return time_of_data_; }
  std::optional<bool> Leads() const { return leads_; }
  const QStringList &Lines() const { return lines_; }
  void SetTime(qint64 now) { now_ = now; }

 private:
  void OnTaken(const std::vector<EventRecord> &records, qint64 time_of_data) {
    ++reads_;
    time_of_data_ = time_of_data;
    Note(records);
  }
  void Note(const std::vector<EventRecord> &records) {
    for (const EventRecord &record : records)
      known_[{record.source, record.event.id}] = record;
  }

  qint64 now_ = start_of_test;
  std::map<std::pair<int, QString>, EventRecord> known_;
  int reads_ = 0;
  int replacements_ = 0;
  qint64 time_of_data_ = 0;
  std::optional<bool> leads_;
  QStringList lines_;
  EventStore store_;
};

/// What a source has said of an event, an hour before the start of the test.
inline EventRecord Said(const QString &id, int source = 0, double magnitude = 2.5, qint64 seen = start_of_test) {
  EventRecord record = {.source = source, .event = Given(id).event, .other_ids = {}, .seen = seen};
  record.event.magnitude = magnitude;
  record.event.updated = seen;
  return record;
}

/// The same at another time.
inline EventRecord SaidAt(const QString &id, qint64 origin_time) {
  EventRecord record = Said(id);
  record.event.origin_time = origin_time;
  return record;
}

/// The same taken back.
inline EventRecord Gone(EventRecord record, qint64 seen) {
  record.is_gone = true;
  record.seen = seen;
  return record;
}

}  // namespace borvane::mirror
