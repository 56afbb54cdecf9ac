#include "configuration.h"

#include <cstdint>
#include <cstdlib>
#include <set>

// Any text as a configuration file: it is refused with the line of each fault, or gives options that the program can
// use.

namespace {

using namespace borvane::mirror;

void Require(bool fact) {
  if (!fact)
    std::abort();
}

void CheckFaults(const QStringList &faults) {
  int line_before = 0;
  for (const QString &fault : faults) {
    Require(fault.startsWith("/fuzz/mirror.toml:"));
    bool is_number = false;
    const int line = fault.section(':', 1, 1).toInt(&is_number);
    Require(is_number && line >= line_before);
    Require(!fault.section(": ", 1).isEmpty());
    line_before = line;
  }
}

void CheckLive(const LiveOptions &live) {
  Require(live.days_shown >= 1 && live.days_shown <= live.days_kept);
  std::set<int> with_feeds;
  for (const Feed &feed : live.feeds) {
    Require(feed.source >= 0 && static_cast<std::size_t>(feed.source) < live.sources.size());
    Require(feed.url.startsWith("https://") || feed.url.startsWith("http://"));
    Require(feed.period.count() >= 1);
    Require(!feed.span.whole || feed.span.whole->count() >= 1);
    with_feeds.insert(feed.source);
  }
  Require(with_feeds.size() == live.sources.size());
  std::set<QString> names;
  for (std::size_t i = 0; i < live.sources.size(); ++i) {
    Require(!live.sources[i].credit.isEmpty());
    Require(names.insert(live.sources[i].name).second);
    Require(i == 0 || live.sources[i].rank < live.sources[i - 1].rank);
  }
}

void CheckBoxes(const std::vector<NamedBox> &boxes) {
  for (const NamedBox &named : boxes) {
    const Box &box = named.box;
    Require(box.south >= -90 && box.south <= box.north && box.north <= 90);
    Require(box.west >= -180 && box.west <= 180 && box.east >= -180 && box.east <= 180);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const QByteArray text(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
  const Configuration configuration = ReadConfiguration(text, "/fuzz/mirror.toml");
  CheckFaults(configuration.faults);
  if (!configuration.faults.isEmpty())
    return 0;
  CheckLive(configuration.options.live);
  CheckBoxes(configuration.options.boxes);
  return 0;
}
