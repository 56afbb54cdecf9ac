#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "live/event_store.h"
#include "live/live_events.h"
#include "log/log.h"

namespace borvane::mirror {

/// The catalogue of the feeds' events: what the store has at the start, then what the poller's readings make of it.
class LiveCatalogue final : public QObject {
 public:
  struct Settings {
    StoreAddress store;  ///< see EventStoreAddress
    std::vector<Source> sources;
    std::vector<Feed> feeds;  ///< the spans of which have to be in memory
    int days_shown = 7;
    QStringList kinds_listed = {"earthquake"};
    EventRetention retention = {};
    EventStore::Timing timing = {};
    std::chrono::milliseconds aging_interval{
        60'000};                    ///< how often it is looked for events that are too old to be shown
    std::function<qint64()> clock;  ///< milliseconds since 1970 UTC
  };
  struct Callbacks {
    /// The events to be served, whenever they have changed. The first call comes with the first events there are, from
    /// the store or from a feed; until then there is nothing to serve.
    std::function<void(std::shared_ptr<const Catalogue>)> changed;
    /// The store had events that this mirror did not know, or knew otherwise: those of an earlier run or of another
    /// mirror.
    std::function<void()> restored;
    /// Whether this mirror asks the feeds, see EventStore.
    std::function<void(bool may_poll)> may_poll;
    WriteLog log;
  };

  LiveCatalogue(Settings settings, Callbacks callbacks);

  /// Begins to read the store, and lets events run until it has been read or the time is up: the first page is to have
  /// what the store has.
  void Start(int milliseconds);

  /// Lets events run until what was taken up is in the store, or the time is up: before the program ends.
  bool Finish(int milliseconds) { return store_.WaitUntilWritten(milliseconds); }

  /// Takes up a reading of the feed; returns why it is refused, empty when it is not.
  QString Take(const Feed &feed, const FeedReading &reading);

  /// Changes what is shown, and returns whether there are events to be shown. More days than at the start are complete
  /// after the next start only.
  bool Show(int days, const QStringList &kinds);

  /// When the newest text was made that was taken up, in milliseconds since 1970 UTC; 0 for none.
  qint64 TimeOfData() const { return time_of_data_; }

  /// How many events are served.
  std::size_t EventsServed() const { return events_served_; }

  const EventStore &store() const { return store_; }

 private:
  std::chrono::milliseconds SpanInMemory() const;
  void Publish();
  void PublishAged();
  void OnStored(std::vector<EventRecord> records, qint64 time_of_data);

  Settings settings_;
  const Callbacks callbacks_;
  LiveEvents events_;
  qint64 time_of_data_ = 0;
  std::size_t events_served_ = 0;
  qint64 oldest_served_ = 0;  ///< the origin time of the oldest event that is served
  qint64 published_ = 0;      ///< when the events were chosen that are served
  bool has_events_ = false;   ///< whether anything was ever taken up
  QTimer aging_timer_;
  EventStore store_;  ///< the last member: it calls back while the others are there
};

}  // namespace borvane::mirror
