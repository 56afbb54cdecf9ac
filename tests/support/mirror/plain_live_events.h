#pragma once

#include <map>
#include <vector>

#include "feeds/feed.h"
#include "feeds/feed_reading.h"

namespace borvane::mirror {

/// The rules of LiveEvents, step by step and slow: each event of a feed is compared with all that are known. Nothing is
/// refused.
class PlainLiveEvents {
 public:
  explicit PlainLiveEvents(std::vector<Source> sources);

  void Take(int source, const FeedSpan &span, const FeedReading &reading, qint64 now);

  /// The events of the last `days`, newest first.
  std::vector<Event> Shown(qint64 now, int days, const QStringList &kinds) const;

 private:
  struct Known {
    Event event;
    QStringList ids;
    qint64 seen = 0;
    bool is_gone = false;
    bool is_present = false;  ///< in the reading that is being taken up
  };

  void TakeEvent(int source, const FeedEvent &given, const FeedReading &reading, qint64 made, qint64 now);
  std::vector<Event> Merged(const std::vector<Event> &shown, const std::vector<Event> &others) const;

  std::vector<Source> sources_;
  std::vector<std::map<QString, Known>> known_;
};

}  // namespace borvane::mirror
