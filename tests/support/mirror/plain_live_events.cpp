#include "support/mirror/plain_live_events.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <tuple>

namespace borvane::mirror {

namespace {

constexpr qint64 minute_of_plain = 60'000;
constexpr qint64 day_of_plain = 24 * 60 * minute_of_plain;

using Point = std::array<double, 3>;

/// The epicentre in kilometres from the Earth's centre.
Point PointOf(const Event &event) {
  const double north = event.latitude * std::numbers::pi / 180;
  const double east = event.longitude * std::numbers::pi / 180;
  return {6371 * std::cos(north) * std::cos(east), 6371 * std::cos(north) * std::sin(east), 6371 * std::sin(north)};
}

/// Along the surface, from the straight line through the Earth.
double PlainDistance(const Event &a, const Event &b) {
  const Point one = PointOf(a);
  const Point other = PointOf(b);
  const double line = std::hypot(one[0] - other[0], one[1] - other[1], one[2] - other[2]);
  return 2 * 6371 * std::asin(std::min(line / 2 / 6371, 1.0));
}

bool MayBeOne(const Event &a, const Event &b) {
  if (std::abs(a.origin_time - b.origin_time) > 30'000 || PlainDistance(a, b) > 100)
    return false;
  return !a.magnitude || !b.magnitude || std::round(std::abs(*a.magnitude - *b.magnitude) * 1000) <= 1500;
}

}  // namespace

PlainLiveEvents::PlainLiveEvents(std::vector<Source> sources) : sources_(std::move(sources)), known_(sources_.size()) {}

void PlainLiveEvents::Take(int source, const FeedSpan &span, const FeedReading &reading, qint64 now) {
  const qint64 made = reading.generated == 0 ? now : reading.generated;
  auto &known = known_.at(static_cast<std::size_t>(source));
  if (span.whole)
    for (auto &[id, event] : known)
      event.is_present = false;
  for (const FeedEvent &given : reading.events)
    TakeEvent(source, given, reading, made, now);
  if (!span.whole)
    return;
  const qint64 first = made - std::chrono::milliseconds(*span.whole).count() + 10 * minute_of_plain;
  for (auto &[id, event] : known) {
    const bool is_in_span = event.event.origin_time >= first && event.event.origin_time <= made;
    if (is_in_span && !event.is_present && !event.is_gone && event.seen < made) {
      event.is_gone = true;
      event.seen = made;
    }
  }
}

void PlainLiveEvents::TakeEvent(int source, const FeedEvent &given, const FeedReading &reading, qint64 made,
                                qint64 now) {
  auto &known = known_.at(static_cast<std::size_t>(source));
  const QString &own = given.event.id;
  std::vector<Known *> same;
  for (auto &[id, event] : known) {
    // Most events have no other id, and need not be looked through.
    const bool shares_an_id =
        (given.ids.size() > 1 && given.ids.contains(id)) || (event.ids.size() > 1 && event.ids.contains(own));
    const auto has_that_id = [&id = id](const FeedEvent &each) { return each.event.id == id; };
    if (id == own || (shares_an_id && std::none_of(reading.events.begin(), reading.events.end(), has_that_id)))
      same.push_back(&event);
  }

  if (given.deleted) {
    for (Known *event : same)
      if (!event->is_gone && event->seen <= made) {
        event->is_gone = true;
        event->seen = made;
      }
    return;
  }
  if (given.event.origin_time > now + day_of_plain)
    return;

  const qint64 updated = std::min(given.updated, made);
  bool is_news = true;
  qint64 seen = made;
  for (Known *event : same) {
    if (event->is_gone && event->event.id == own && made <= event->seen)
      is_news = false;
    if (event->is_gone)
      continue;
    if (updated < event->event.updated || (updated == event->event.updated && made < event->seen))
      is_news = false;
    event->is_present = true;
    event->seen = std::max(event->seen, made);
    seen = std::max(seen, event->seen);
  }
  if (!is_news)
    return;
  for (Known *event : same)
    if (event->event.id != own && !event->is_gone)
      event->is_gone = true;
  Known &place = known[own];
  place.event = given.event;
  place.event.updated = updated;
  place.event.credit = sources_[static_cast<std::size_t>(source)].credit;
  place.ids = given.ids;
  place.seen = seen;
  place.is_gone = false;
  place.is_present = true;
}

std::vector<Event> PlainLiveEvents::Merged(const std::vector<Event> &shown, const std::vector<Event> &others) const {
  // Milliseconds, kilometres, and the two events.
  using Pair = std::tuple<qint64, double, qint64, QString, qint64, QString>;
  std::vector<Pair> pairs;
  for (const Event &a : shown)
    for (const Event &b : others)
      if (MayBeOne(a, b))
        pairs.emplace_back(std::abs(a.origin_time - b.origin_time), PlainDistance(a, b), a.origin_time, a.id,
                           b.origin_time, b.id);
  std::vector<QString> doubles;
  while (!pairs.empty()) {
    const Pair nearest = *std::min_element(pairs.begin(), pairs.end());
    doubles.push_back(std::get<5>(nearest));
    std::erase_if(pairs, [&](const Pair &pair) {
      return std::get<3>(pair) == std::get<3>(nearest) || std::get<5>(pair) == std::get<5>(nearest);
    });
  }
  std::vector<Event> all = shown;
  for (const Event &event : others)
    if (std::find(doubles.begin(), doubles.end(), event.id) == doubles.end())
      all.push_back(event);
  return all;
}

std::vector<Event> PlainLiveEvents::Shown(qint64 now, int days, const QStringList &kinds) const {
  std::vector<std::size_t> by_rank;
  for (std::size_t source = 0; source < sources_.size(); ++source)
    by_rank.push_back(source);
  std::stable_sort(by_rank.begin(), by_rank.end(),
                   [this](std::size_t a, std::size_t b) { return sources_[a].rank > sources_[b].rank; });

  const qint64 since = now - days * day_of_plain;
  std::vector<Event> all;
  for (const std::size_t source : by_rank) {
    std::vector<Event> events;
    for (const auto &[id, event] : known_[source])
      if (!event.is_gone && event.event.origin_time >= since - minute_of_plain)
        events.push_back(event.event);
    all = Merged(all, events);
  }
  std::erase_if(all, [since](const Event &event) { return event.origin_time < since; });
  for (Event &event : all)
    event.is_listed = event.kind.isEmpty() ? kinds.contains("earthquake") : kinds.contains(event.kind);
  std::stable_sort(all.begin(), all.end(),
                   [](const Event &a, const Event &b) { return a.origin_time > b.origin_time; });
  return all;
}

}  // namespace borvane::mirror
