#include "catalogue/event.h"

#include <algorithm>
#include <cmath>

namespace borvane::mirror {

namespace {

constexpr qsizetype longest_id = 64;
constexpr double earliest_origin_time = -30'610'224'000'000.0;  // the start of the year 1000
constexpr double latest_origin_time = 253'402'214'400'000.0;    // a day before the end of 9999, room for any time zone
constexpr double least_magnitude = -9.94;                       // -9.9 on a page
constexpr double greatest_magnitude = 99.94;
constexpr double highest_hypocentre = -100;  // kilometres; far above any mountain
constexpr double deepest_hypocentre = 6371;  // the Earth's centre

bool IsIdCharacter(QChar character) {
  const char16_t c = character.unicode();
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '_' || c == '-';
}

}  // namespace

bool IsEventId(const QString &id) {
  return !id.isEmpty() && id.size() <= longest_id && std::all_of(id.begin(), id.end(), IsIdCharacter);
}

bool IsOriginTime(double milliseconds) {
  return milliseconds >= earliest_origin_time && milliseconds <= latest_origin_time;
}

std::optional<double> NormalLongitude(double degrees) {
  if (!(std::abs(degrees) <= 360))
    return std::nullopt;
  if (degrees > 180)
    return degrees - 360;
  if (degrees < -180)
    return degrees + 360;
  return degrees;
}

std::optional<double> PlausibleMagnitude(double value) {
  if (value >= least_magnitude && value <= greatest_magnitude)
    return value;
  return std::nullopt;
}

std::optional<double> PlausibleDepth(double value) {
  if (value >= highest_hypocentre && value <= deepest_hypocentre)
    return value;
  return std::nullopt;
}

}  // namespace borvane::mirror
