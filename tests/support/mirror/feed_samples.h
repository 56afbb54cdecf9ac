#pragma once

#include <chrono>
#include <utility>
#include <vector>

#include "feeds/feed.h"
#include "feeds/feed_reading.h"

namespace borvane::mirror {

inline constexpr qint64 one_minute = 60'000;
inline constexpr qint64 one_hour = 60 * one_minute;
inline constexpr qint64 one_day = 24 * one_hour;

/// The time of the tests' clocks at their start: 2026-06-19 03:04:05 UTC.
inline constexpr qint64 start_of_test = 1'781'838'245'000;

/// An event as a feed gives it, an hour old at the start of the test.
inline FeedEvent Given(const QString &id, qint64 updated = start_of_test - 30 * one_minute) {
  FeedEvent given;
  given.event.id = id;
  given.event.origin_time = start_of_test - one_hour;
  given.event.latitude = 35.5;
  given.event.longitude = -117.25;
  given.event.depth = 8.5;
  given.event.magnitude = 2.5;
  given.event.place = "14 km SW of Searles Valley, CA";
  given.event.network = "ci";
  given.event.kind = "earthquake";
  given.updated = updated;
  given.ids = QStringList{id};
  return given;
}

/// The same with a magnitude by which it is recognised.
inline FeedEvent Given(const QString &id, qint64 updated, double magnitude) {
  FeedEvent given = Given(id, updated);
  given.event.magnitude = magnitude;
  return given;
}

/// The same at another time.
inline FeedEvent GivenAt(const QString &id, qint64 origin_time) {
  FeedEvent given = Given(id, origin_time + one_minute);
  given.event.origin_time = origin_time;
  return given;
}

/// The same known under further ids.
inline FeedEvent AlsoKnownAs(FeedEvent given, const QStringList &ids) {
  given.ids += ids;
  return given;
}

inline FeedEvent Deleted(const QString &id) {
  FeedEvent given;
  given.event.id = id;
  given.ids = QStringList{id};
  given.deleted = true;
  return given;
}

/// A reading of a text that was made at that time.
inline FeedReading ReadingOf(std::vector<FeedEvent> events, qint64 made = start_of_test) {
  FeedReading reading;
  reading.generated = made;
  reading.events = std::move(events);
  return reading;
}

inline FeedSpan Recent() { return {}; }
inline FeedSpan WholeWeek() { return {.whole = std::chrono::hours(7 * 24)}; }

/// The sources of most tests: the second is believed less than the first.
inline std::vector<Source> TwoSources() {
  return {{.name = "survey", .credit = "The survey", .rank = 2}, {.name = "centre", .credit = "The centre", .rank = 1}};
}

}  // namespace borvane::mirror
