#include "feeds/feed_reading.h"

#include <QHash>
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

/// Of several events with one id, the one that was revised last; the first of them where that is the same.
void KeepEachIdOnce(std::vector<FeedEvent> &events) {
  QHash<QString, std::size_t> places;
  places.reserve(static_cast<qsizetype>(events.size()));
  std::size_t kept = 0;
  for (FeedEvent &event : events) {
    const std::size_t place = places.value(event.event.id, kept);
    FeedEvent &slot = events[place];
    if (place == kept) {
      places.insert(event.event.id, kept);
      ++kept;
    } else if (event.updated <= slot.updated) {
      continue;
    }
    if (&slot != &event)
      slot = std::move(event);
  }
  events.resize(kept);
}

}  // namespace

void LeaveOut(FeedReading &reading, const QStringList &ids) {
  ++reading.left_out;
  if (ids.isEmpty())
    ++reading.nameless;
  reading.unread_ids += ids;
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
