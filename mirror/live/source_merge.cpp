#include "live/source_merge.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <numbers>
#include <span>
#include <tuple>

namespace borvane::mirror {

namespace {

constexpr qint64 most_milliseconds_apart = 30'000;
constexpr double most_kilometres_apart = 100;
constexpr double most_magnitudes_apart = 1.5 + 1e-9;  // 4.7 and 3.2 are more than 1.5 apart in binary
constexpr std::size_t most_compared = 50;             // with one; a dense aftershock sequence has ten a minute
constexpr double radius_of_the_earth = 6371;          // kilometres

double KilometresBetween(const Event &a, const Event &b) {
  const auto radians = [](double degrees) { return degrees * std::numbers::pi / 180; };
  const double half_north = std::sin(radians(b.latitude - a.latitude) / 2);
  const double half_east = std::sin(radians(b.longitude - a.longitude) / 2);
  const double square =
      half_north * half_north + std::cos(radians(a.latitude)) * std::cos(radians(b.latitude)) * half_east * half_east;
  return 2 * radius_of_the_earth * std::asin(std::sqrt(std::min(square, 1.0)));
}

bool HaveLikeMagnitudes(const Event &a, const Event &b) {
  return !a.magnitude || !b.magnitude || std::abs(*a.magnitude - *b.magnitude) <= most_magnitudes_apart;
}

bool IsEarlier(const Event *a, const Event *b) {
  return std::tie(a->origin_time, a->id) < std::tie(b->origin_time, b->id);
}

/// Two events that may be one.
struct Pair {
  qint64 milliseconds_apart;
  double kilometres_apart;
  std::size_t shown;  ///< the places of the two in their lists
  std::size_t other;
};

bool IsNearer(const Pair &a, const Pair &b) {
  return std::tie(a.milliseconds_apart, a.kilometres_apart, a.shown, a.other) <
         std::tie(b.milliseconds_apart, b.kilometres_apart, b.shown, b.other);
}

/// Those of `events`, which are in the order of time, that may be one with an event of `time`: the nearest in time, and
/// no more than are compared.
std::span<const Event *const> NearestInTime(const std::vector<const Event *> &events, qint64 time) {
  constexpr qint64 too_far = most_milliseconds_apart + 1;
  const auto middle = std::lower_bound(events.begin(), events.end(), time,
                                       [](const Event *event, qint64 moment) { return event->origin_time < moment; });
  auto first = middle;
  auto last = middle;
  while (static_cast<std::size_t>(last - first) < most_compared) {
    const qint64 before = first == events.begin() ? too_far : time - (*std::prev(first))->origin_time;
    const qint64 after = last == events.end() ? too_far : (*last)->origin_time - time;
    if (std::min(before, after) > most_milliseconds_apart)
      break;
    before < after ? --first : ++last;
  }
  return {first, last};
}

/// All pairs of an event of either list, both in the order of time.
std::vector<Pair> PairsOf(const std::vector<const Event *> &shown, const std::vector<const Event *> &others) {
  std::vector<Pair> pairs;
  for (std::size_t i = 0; i < others.size(); ++i) {
    const Event &other = *others[i];
    for (const Event *const &event : NearestInTime(shown, other.origin_time)) {
      const double kilometres = KilometresBetween(*event, other);
      if (kilometres <= most_kilometres_apart && HaveLikeMagnitudes(*event, other))
        pairs.push_back({.milliseconds_apart = std::abs(event->origin_time - other.origin_time),
                         .kilometres_apart = kilometres,
                         .shown = static_cast<std::size_t>(&event - shown.data()),
                         .other = i});
    }
  }
  std::sort(pairs.begin(), pairs.end(), IsNearer);
  return pairs;
}

/// Those of `others` that are none of the shown events. The doubles are added to `doubles`.
std::vector<const Event *> WithoutDoubles(const std::vector<const Event *> &shown,
                                          const std::vector<const Event *> &others,
                                          std::vector<std::pair<const Event *, const Event *>> &doubles) {
  std::vector<bool> shown_has_one(shown.size());
  std::vector<bool> is_double(others.size());
  for (const Pair &pair : PairsOf(shown, others)) {
    if (shown_has_one[pair.shown] || is_double[pair.other])
      continue;
    shown_has_one[pair.shown] = true;
    is_double[pair.other] = true;
    doubles.emplace_back(others[pair.other], shown[pair.shown]);
  }
  std::vector<const Event *> rest;
  for (std::size_t i = 0; i < others.size(); ++i)
    if (!is_double[i])
      rest.push_back(others[i]);
  return rest;
}

}  // namespace

MergedEvents MergeSources(std::vector<std::vector<const Event *>> sources) {
  MergedEvents result;
  std::vector<const Event *> shown;  // the same, in the order of time
  for (std::vector<const Event *> &events : sources) {
    std::sort(events.begin(), events.end(), IsEarlier);
    const std::vector<const Event *> rest = shown.empty() ? events : WithoutDoubles(shown, events, result.doubles);
    result.shown.insert(result.shown.end(), rest.begin(), rest.end());
    const auto middle = static_cast<std::ptrdiff_t>(shown.size());
    shown.insert(shown.end(), rest.begin(), rest.end());
    std::inplace_merge(shown.begin(), shown.begin() + middle, shown.end(), IsEarlier);
  }
  return result;
}

}  // namespace borvane::mirror
