#pragma once

#include <QObject>
#include <QString>
#include <QThreadPool>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "feeds/feed.h"
#include "feeds/feed_fetcher.h"
#include "feeds/feed_reading.h"
#include "feeds/feed_schedule.h"
#include "log/log.h"

namespace borvane::mirror {

/// The state of a feed, for monitoring.
struct FeedState {
  QString url;                       ///< without its query, which may hold a key
  std::chrono::seconds period{0};    ///< of the feed
  std::chrono::seconds lifetime{0};  ///< of the last good answer, as its server has given it
  qint64 last_success = 0;           ///< in milliseconds since 1970 UTC; 0 for never
  quint64 failures = 0;              ///< since the mirror has started
  int left_out = 0;                  ///< what was no event in the last good reading
  QString fault;                     ///< of the last request; empty when it went well
};

/// Asks for the configured feeds, each when it is due, one request at a time for each host. The answers are read in a
/// thread of their own, so that nothing waits for a large one.
class FeedPoller final : public QObject {
 public:
  /// Takes a good reading of the feed, in the poller's thread. Returns why it cannot be believed; empty when it is
  /// taken up.
  using Take = std::function<QString(const Feed &feed, FeedReading reading)>;

  /// What the poller asks of the computer; a test brings its own.
  struct Surroundings {
    FeedLimits limits = {};
    QString authorities = {};                        ///< see FeedFetcher
    std::function<Clocks()> clocks = {};             ///< the computer's where it is empty
    std::function<double()> random = {};             ///< from 0 to below 1; the computer's where it is empty
    std::chrono::milliseconds look_interval{5'000};  ///< the longest time until it notices that the computer has slept
  };

  /// `take` gets each reading that is another than the last one of its feed, `log` a line when a feed stops working,
  /// when it works again, and when the number of its events that cannot be read, or have no id, rises or is none again.
  FeedPoller(std::vector<Feed> feeds, Take take, WriteLog log);
  FeedPoller(std::vector<Feed> feeds, Take take, WriteLog log, Surroundings surroundings);
  ~FeedPoller() override;

  /// Asks for every feed, in their order, and again whenever one is due; not before the last answer's lifetime is over,
  /// though it came before a Stop. Less than a minute after a Stop, periods and pauses go on as if there had been none,
  /// so that a mirror that loses the lead and gets it back, again and again, asks no more often than another one. Does
  /// nothing for one that has been started.
  void Start();

  /// Ends what is under way, which then counts as not answered. Nothing is taken any more until the next Start.
  void Stop();

  /// What was made of the answers so far is not the newest state any more: the next answer of each feed is taken even
  /// if it is the same as the last one. To be called while the poller is stopped.
  void ForgetAnswers();

  bool IsRunning() const { return is_running_; }

  /// In the order of the feeds.
  std::vector<FeedState> States() const;

 private:
  struct Polled;
  struct Read;
  struct LeftOut;

  void Look();
  std::vector<Polled *> ByDue() const;
  void LookSoon();
  void NoticeSleep(const Clocks &now);
  bool IsHostBusy(const Polled &polled) const;
  void Ask(Polled &polled);
  void OnAnswer(Polled &polled, FeedAnswer answer);
  void StartReading(Polled &polled, FeedAnswer answer);
  void OnRead(Polled &polled, Read read);
  void SeeLeftOut(Polled &polled, const LeftOut &left_out);
  void Succeed(Polled &polled, const FeedAnswer &answer);
  void Fail(Polled &polled, const FeedAnswer &answer, const QString &fault);
  void LeaveAlone(const std::string &host, std::chrono::milliseconds until);

  const Take take_;
  const WriteLog log_;
  Surroundings surroundings_;
  std::vector<std::unique_ptr<Polled>> feeds_;
  FeedFetcher fetcher_;
  QTimer timer_;
  Clocks seen_;  ///< at the last look
  bool is_running_ = false;
  std::optional<std::chrono::milliseconds> stopped_;  ///< when it was last, by the clock that is never set
  quint64 run_ = 0;  ///< counts starts and stops, so that a late reading is known for one of an earlier run
  QThreadPool reader_;
};

}  // namespace borvane::mirror
