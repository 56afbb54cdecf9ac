#pragma once

#include <QByteArray>
#include <optional>

namespace borvane::mirror {

// An event's figures as the pages write them.

/// One decimal, a half rounded away from zero, as the Survey's own titles do.
QByteArray MagnitudeText(double magnitude);

/// The number that MagnitudeText writes. What a page says of a row goes by it, so that no row contradicts its text.
double ShownMagnitude(double magnitude);

/// Three decimals and N or S.
QByteArray LatitudeText(double degrees);

/// Three decimals and E or W.
QByteArray LongitudeText(double degrees);

/// Three decimals, with a minus sign in the south and in the west.
QByteArray SignedDegreesText(double degrees);

/// Kilometres with one decimal; empty for a depth that is not known.
QByteArray DepthText(std::optional<double> kilometres);

/// Date and time of the computer's local time zone, "2018/02/07 01:26:13", of a moment in milliseconds since 1970 UTC.
/// The zone is the one that tzset has last read.
QByteArray LocalTimeText(qint64 milliseconds);

/// The same in UTC.
QByteArray UtcTimeText(qint64 milliseconds);

/// The local time zone's distance from UTC at that moment, "UTC-07:00".
QByteArray ZoneText(qint64 milliseconds);

/// Those distances from one moment to another: "UTC-07:00", or "UTC-08:00 (UTC-07:00 before 2026/11/01 09:00:00 UTC)"
/// where the clocks were changed between the two, or "UTC-08:00, or the offset in force on the date" where that was
/// more than once.
QByteArray ZonesText(qint64 first, qint64 last);

}  // namespace borvane::mirror
