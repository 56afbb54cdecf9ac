#pragma once

#include <QObject>
#include <QString>
#include <QThreadPool>
#include <QTimer>
#include <functional>
#include <memory>
#include <vector>

#include "feeds/feed.h"
#include "feeds/feed_fetcher.h"
#include "feeds/feed_reading.h"
#include "feeds/feed_schedule.h"

namespace borvane::mirror {

/// How a feed fares, for whoever watches the mirror.
struct FeedState {
  QString url;
  qint64 last_success = 0;  ///< in milliseconds since 1970 UTC; 0 for never
  quint64 failures = 0;     ///< since the start
  QString fault;            ///< of the last request; empty when it went well
};

/// Asks for the configured feeds in turn, one request at a time for each host, and reads the answers in a thread of its
/// own, so that nothing else waits for a large one.
class FeedPoller final : public QObject {
 public:
  /// Takes a good reading of `feed`, in the poller's thread. Returns why it cannot be believed; empty when it is taken.
  using Take = std::function<QString(const Feed &feed, FeedReading reading)>;
  using Log = std::function<void(const QString &)>;

  /// What the poller asks of its surroundings; a test brings its own.
  struct Surroundings {
    FeedLimits limits = {};
    QString authorities = {};                        ///< see FeedFetcher
    std::function<FeedSchedule::Moment()> now = {};  ///< the computer's clocks when empty
    std::function<double()> random = {};             ///< from 0 to below 1; a good source when empty
    std::chrono::milliseconds look_interval{5'000};  ///< how often it looks whether the computer has slept
  };

  /// `take` gets each reading that says anything new, `log` a line when a feed stops working and when it works again.
  FeedPoller(std::vector<Feed> feeds, Take take, Log log);
  FeedPoller(std::vector<Feed> feeds, Take take, Log log, Surroundings surroundings);
  ~FeedPoller() override;

  /// Asks for every feed, and from now on whenever it is due. Does nothing when it has been started.
  void Start();

  /// Ends what is under way; nothing is taken any more until the next Start.
  void Stop();

  bool IsRunning() const;

  /// In the order of the feeds.
  std::vector<FeedState> States() const;

 private:
  struct Polled;

  void Look();
  void Ask(Polled &polled);
  void OnAnswer(Polled &polled, FeedAnswer answer);
  void OnReading(Polled &polled, FeedAnswer answer, FeedReading reading);
  void Succeed(Polled &polled, const FeedAnswer &answer);
  void Fail(Polled &polled, const FeedAnswer &answer, FeedSchedule::Failure failure, const QString &fault);

  const Take take_;
  const Log log_;
  const Surroundings surroundings_;
  std::vector<std::unique_ptr<Polled>> feeds_;
  std::unique_ptr<FeedFetcher> fetcher_;
  QThreadPool reader_;
  QTimer timer_;
  quint64 run_ = 0;  ///< counts starts and stops, so that what comes late is known for late
};

}  // namespace borvane::mirror
