#include "feeds/feed_reading.h"

#include <QDateTime>
#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <utility>

namespace borvane::mirror {

namespace {

// What a page has room for; the longest real ones have about 80, 3 and 20 characters.
constexpr qsizetype longest_place_name = 200;
constexpr qsizetype longest_network_code = 16;
constexpr qsizetype longest_kind_name = 64;

// Of a few features, one that is no event can be the most part.
constexpr std::size_t fewest_to_judge = 10;

/// `text` with at most `length` characters; a pair that makes one character is not cut in two.
QString CutTo(QString text, qsizetype length) {
  if (text.size() <= length)
    return text;
  return text.first(text[length].isLowSurrogate() ? length - 1 : length);
}

void CutNames(Event &event) {
  event.place = CutTo(std::move(event.place), longest_place_name);
  event.network = CutTo(std::move(event.network), longest_network_code);
  event.kind = CutTo(std::move(event.kind), longest_kind_name);
}

/// Of several events with one id, the one that was revised last, in the place of the first; the first of them where
/// that is the same.
void KeepEachIdOnce(std::vector<FeedEvent> &events) {
  std::vector<std::size_t> by_id(events.size());
  std::iota(by_id.begin(), by_id.end(), std::size_t{0});
  std::sort(by_id.begin(), by_id.end(), [&](std::size_t a, std::size_t b) {
    const int order = events[a].event.id.compare(events[b].event.id);
    return order < 0 || (order == 0 && a < b);
  });
  std::vector<bool> is_repeated(events.size());
  std::size_t first = 0;
  for (std::size_t i = 1; i < by_id.size(); ++i) {
    FeedEvent &kept = events[by_id[first]];
    FeedEvent &other = events[by_id[i]];
    if (other.event.id != kept.event.id) {
      first = i;
      continue;
    }
    is_repeated[by_id[i]] = true;
    if (other.updated > kept.updated)
      std::swap(kept, other);
  }
  std::size_t left = 0;
  for (std::size_t i = 0; i < events.size(); ++i) {
    if (is_repeated[i])
      continue;
    if (left != i)
      events[left] = std::move(events[i]);
    ++left;
  }
  events.resize(left);
}

}  // namespace

void LeaveOut(FeedReading &reading, const QStringList &ids) {
  ++reading.left_out;
  if (ids.isEmpty())
    ++reading.nameless;
  reading.unread_ids += ids;
}

QString FaultOfTime(qint64 generated, qint64 now) {
  constexpr qint64 most_apart = 24LL * 60 * 60 * 1000;
  if (std::abs(generated - now) <= most_apart)
    return {};
  return QString("made at %1, more than a day from this computer's clock")
      .arg(QDateTime::fromMSecsSinceEpoch(generated, Qt::UTC).toString(Qt::ISODate));
}

FeedReading FaultyReading(const QString &fault) {
  FeedReading reading;
  reading.fault = fault;
  return reading;
}

FeedReading FinishReading(FeedReading reading) {
  const auto left_out = static_cast<std::size_t>(reading.left_out);
  const std::size_t all = reading.events.size() + left_out;
  if (all >= fewest_to_judge && left_out * 2 > all)
    return FaultyReading(QString("%1 of its %2 events cannot be read").arg(left_out).arg(all));

  KeepEachIdOnce(reading.events);
  for (FeedEvent &event : reading.events)
    CutNames(event.event);
  return reading;
}

}  // namespace borvane::mirror
