#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "live/event_record.h"
#include "live/event_tables.h"
#include "log/log.h"
#include "store/migrations.h"
#include "store/store_thread.h"

namespace borvane::mirror {

/// The tables of the events.
constexpr Schema events_schema = {.folder = ":/live/schema", .newest = 1};

/// Where the events are kept beside a service's store: in a file "NAME-events.sqlite" beside its file "NAME.sqlite", or
/// in a schema of their own in its database.
StoreAddress EventStoreAddress(const StoreAddress &service);

/// Keeps events in an SQL database, in a thread of its own: nothing here ever waits. What cannot be written is kept in
/// memory, reading by reading, and written as soon as the store works again. Of more than fits, each event's last state
/// is kept, and of too many events the newest.
///
/// Several mirrors may share a database of a server. One of them, the leader, asks the feeds; the others see what it
/// writes within two seconds, and one of them takes its place within a minute after it has ended or frozen. In an
/// SQLite file every mirror leads.
class EventStore final : public QObject {
 public:
  /// What the store reports to its owner, in the owner's thread.
  struct Callbacks {
    /// What was read: at the start, once, even when the store has nothing, and then what another mirror has written.
    /// What is not yet written here is not among it. `time_of_data` is the time of the newest feed among it, 0 if there
    /// is none. A time that lies more than a day ahead, from a clock that was wrong, is that of the reading instead.
    std::function<void(std::vector<EventRecord> records, qint64 time_of_data)> take;
    /// What is to be written to a store that has been replaced by another one: all that is known.
    std::function<std::vector<EventRecord>()> everything;
    /// Whether this mirror leads. Without an answer of the database's server it leads after half a minute, since old
    /// events are worse than a feed that is asked twice.
    std::function<void(bool leads)> lead;
    /// A line when the store stops working, when it works again, and when there is another store in its place.
    WriteLog log;
  };

  /// How often and how long; shorter in a test.
  struct Timing {
    std::chrono::milliseconds look_interval{1'000};      ///< how often it is looked for what has changed
    std::chrono::milliseconds retry_interval{5'000};     ///< after a failure
    std::chrono::milliseconds takeover_timeout{30'000};  ///< how long the server may be silent before this mirror leads
  };
  struct Settings {
    EventRetention retention = {};
    Timing timing = {};
    std::function<qint64()> clock;  ///< milliseconds since 1970 UTC
  };

  /// `sources` are the names under which the records' sources are kept.
  EventStore(const StoreAddress &address, QStringList sources, Settings settings, Callbacks callbacks);

  /// Reads the events whose origin is at most `span` ago, and from now on those that other mirrors write. When the
  /// clock has been set back all of them are read again: by a clock that was ahead, some were too old.
  void Start(std::chrono::milliseconds span);

  /// Writes the records, those of one call in one transaction. `time_of_data` is the time of the feed that gave them.
  void Write(const std::vector<EventRecord> &records, qint64 time_of_data);

  /// Waits until the store has been read or cannot be, or the time is up; no request is answered meanwhile. Returns
  /// whether it was read.
  bool WaitUntilRead(int milliseconds) const;

  /// Lets events run until all is on the disk, or the time is up. Returns whether it is.
  bool WaitUntilWritten(int milliseconds) const;

  /// Whether the store did what it was asked for last. A read does not end a failure to write.
  bool Works() const { return can_read_ && can_write_; }

  /// How many records are not yet on the disk.
  std::size_t Unwritten() const { return unwritten_; }

 private:
  /// What a job has found in the store, passed from the store's thread.
  struct Found {
    bool exists = false;
    EventsState state = {};  ///< before the job's changes
    bool leads = true;
    std::vector<EventRecord> records = {};
  };

  /// What is written in one transaction.
  struct Batch {
    std::vector<EventRecord> records;  ///< by their sources and ids, each once
    qint64 time_of_data = 0;
  };

  void Look();
  void NoteTime();
  void Read();
  void OnRead(bool has_worked, Found &found);
  void LogAnother(const EventsState &state);
  bool DropUnwritten(std::vector<EventRecord> &records) const;
  void GiveUpSome();
  void WriteWhatWaits();
  void OnWritten(const Found &found);
  void Retain();
  void OnOutcome(Access access, bool has_worked);
  void Lead(bool leads);

  const QString name_;
  const QStringList sources_;
  const Settings settings_;
  const Callbacks callbacks_;
  const bool is_shared_;  ///< a server's database
  std::chrono::milliseconds span_{0};
  bool is_read_ = false;                              ///< whether the store has been read
  bool is_complete_ = false;                          ///< whether all of the span has been read
  qint64 time_ = 0;                                   ///< the clock's when it was last looked at
  bool is_reading_ = false;                           ///< whether it is being read
  std::optional<QByteArray> identity_;                ///< of the store that was read; nothing while there is none
  std::optional<QByteArray> logged_;                  ///< the identity of the other store that was logged last
  qint64 number_ = 0;                                 ///< of the last change that is known
  std::deque<std::shared_ptr<const Batch>> waiting_;  ///< to be written
  std::shared_ptr<const Batch> under_way_;            ///< the one that is being written
  std::size_t unwritten_ = 0;                         ///< how many records both have
  qint64 time_of_data_ = 0;
  bool can_read_ = true;   ///< whether the last read worked
  bool can_write_ = true;  ///< whether the last write worked
  std::optional<bool> leads_;
  bool is_retaining_ = false;
  int changes_until_check_ = 0;
  QTimer look_timer_;
  QTimer retry_timer_;
  QTimer takeover_timer_;
  StoreThread store_;  ///< the last member: it calls back while the others are there
};

}  // namespace borvane::mirror
