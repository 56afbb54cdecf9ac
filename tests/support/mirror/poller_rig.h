#pragma once

#include <QStringList>
#include <chrono>
#include <functional>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "feeds/feed_poller.h"
#include "support/mirror/feed_server.h"
#include "support/mirror/run_until.h"

namespace borvane::mirror {

/// The moment at which the tests begin.
inline constexpr std::chrono::milliseconds today{1'781'838'300'000};

/// A summary feed with these events, made at the moment at which the tests begin.
inline QByteArray SummaryOf(const QByteArrayList &ids) {
  QByteArrayList features;
  for (const QByteArray &id : ids)
    features += R"({"id":")" + id + R"(","properties":{"time":1781838000000},"geometry":{"coordinates":[1,2]}})";
  return R"({"type":"FeatureCollection","metadata":{"generated":)" + QByteArray::number(qint64{today.count()}) +
         R"(},"features":[)" + features.join(',') + "]}";
}

/// A poller whose clocks the test moves, with a record of what it gives and logs.
class PollerRig {
 public:
  explicit PollerRig(std::vector<Feed> feeds)
      : poller(
            std::move(feeds), [this](const Feed &feed, FeedReading reading) { return Take(feed, std::move(reading)); },
            [this](LogLevel level, const QString &line) {
              levels += level;
              log += line;
            },
            {.clocks = [this] { return clocks_; },
             .random = [] { return 0.0; },
             .look_interval = std::chrono::milliseconds(5)}) {}

  /// Moves all clocks forward, as time does.
  void Pass(std::chrono::milliseconds time) {
    clocks_.awake += time;
    Sleep(time);
  }

  /// Lets the computer sleep.
  void Sleep(std::chrono::milliseconds time) {
    clocks_.elapsed += time;
    SetClockForward(time);
  }

  void SetClockForward(std::chrono::milliseconds time) { clocks_.of_day += time; }

  bool HasTaken(qsizetype readings) const {
    return RunUntil([&] { return taken.size() >= readings; });
  }
  bool HasLogged(qsizetype lines) const {
    return RunUntil([&] { return log.size() >= lines; });
  }

  QStringList taken;     ///< a line a reading: the feed's source and the ids
  qint64 generated = 0;  ///< of the last reading
  QStringList log;
  QList<LogLevel> levels;  ///< of the lines
  QString refusal;         ///< what readings are refused with; empty for not at all
  std::function<void()> at_take = [] {};
  FeedPoller poller;

 private:
  QString Take(const Feed &feed, FeedReading reading) {
    QStringList ids;
    for (const FeedEvent &event : reading.events)
      ids += event.event.id;
    taken += QString("%1: %2").arg(feed.source).arg(ids.join(' '));
    generated = reading.generated;
    at_take();
    return refusal;
  }

  Clocks clocks_ = {.elapsed = std::chrono::seconds(2'000), .awake = std::chrono::seconds(1'000), .of_day = today};
};

/// A feed that is asked for each minute.
inline Feed FeedAt(const QString &url, int source = 0, FeedForm form = FeedForm::Summary) {
  return {.url = url, .form = form, .period = std::chrono::minutes(1), .span = {}, .source = source};
}

inline bool HasBeenAsked(const FeedServer &server, qsizetype requests) {
  return RunUntil([&] { return server.Requests().size() >= requests; });
}

/// Expects no request more, as far as a short wait can show.
inline void ExpectNoMoreThan(const FeedServer &server, qsizetype requests) {
  RunFor(60);
  EXPECT_EQ(server.Requests().size(), requests);
}

}  // namespace borvane::mirror
