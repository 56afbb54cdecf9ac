#pragma once

#include <QStringList>
#include <cstddef>
#include <vector>

#include "feeds/feed_poller.h"
#include "http/traffic.h"

namespace borvane::mirror {

/// The state of the mirror.
struct Status {
  qint64 now = 0;  ///< this and all times in milliseconds since 1970 UTC
  Traffic traffic = {};
  int connections = 0;
  std::size_t events = 0;  ///< that are served
  bool is_live = false;    ///< whether these are to be the feeds' events
  qint64 data_time = 0;    ///< when the newest of them were made; 0 for none
  std::vector<FeedState> feeds = {};
  qint64 asking_since = 0;  ///< 0 while another mirror asks the feeds for all
  bool service_store_works = true;
  bool event_store_works = true;
  std::size_t unwritten_events = 0;  ///< that wait for the store
};

/// What is wrong, a sentence each; empty when all is well.
QStringList FaultsOf(const Status &status);

/// The status in the text form of Prometheus. The feeds are in it where this mirror asks them.
QByteArray MetricsText(const Status &status);

}  // namespace borvane::mirror
