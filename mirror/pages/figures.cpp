#include "pages/figures.h"

#include <QStringBuilder>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <limits>

namespace borvane::mirror {

namespace {

/// Writes the number over `digits` characters, with leading zeros.
void PutDigits(char *text, int digits, int number) {
  for (int i = digits - 1; i >= 0; --i, number /= 10)
    text[i] = static_cast<char>('0' + number % 10);
}

QByteArray TimeText(const std::tm &moment) {
  char text[] = "0000/00/00 00:00:00";
  PutDigits(text, 4, moment.tm_year + 1900);
  PutDigits(text + 5, 2, moment.tm_mon + 1);
  PutDigits(text + 8, 2, moment.tm_mday);
  PutDigits(text + 11, 2, moment.tm_hour);
  PutDigits(text + 14, 2, moment.tm_min);
  PutDigits(text + 17, 2, moment.tm_sec);
  return text;
}

/// The moment's second since 1970.
std::time_t SecondOf(qint64 milliseconds) {
  return static_cast<std::time_t>(milliseconds / 1000 - (milliseconds % 1000 < 0 ? 1 : 0));
}

QByteArray ThreeDecimals(double value) {
  std::array<char, std::numeric_limits<double>::max_exponent10 + 8> text{};  // a sign, the digits, and the decimals
  const char *end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, 3).ptr;
  return {text.data(), end - text.data()};
}

QByteArray DegreesText(double degrees, char positive, char negative) {
  QByteArray text = ThreeDecimals(degrees);
  char letter = positive;
  if (text.startsWith('-')) {
    text.remove(0, 1);
    if (text != "0.000")
      letter = negative;
  }
  text += letter;
  return text;
}

/// How far local time is ahead of UTC at that second, in seconds.
long OffsetAt(std::time_t second) {
  std::tm moment = {};
  ::localtime_r(&second, &moment);
  return moment.tm_gmtoff;
}

QByteArray OffsetText(long seconds) {
  const int minutes = static_cast<int>(std::labs(seconds) / 60);
  char text[] = "UTC+00:00";
  if (seconds < 0)
    text[3] = '-';
  PutDigits(text + 4, 2, minutes / 60);
  PutDigits(text + 7, 2, minutes % 60);
  return text;
}

/// The latest second from which on the offset is that of `last` up to `last`, if it is after `first`. No zone keeps an
/// offset for less than a week.
std::optional<std::time_t> LastChange(std::time_t first, std::time_t last) {
  constexpr std::time_t week = 7 * 86'400;
  const long offset = OffsetAt(last);
  std::time_t same = last;
  while (same > first) {
    std::time_t other = std::max(first, same - week);
    if (OffsetAt(other) == offset) {
      same = other;
      continue;
    }
    while (same - other > 1) {
      const std::time_t middle = other + (same - other) / 2;
      (OffsetAt(middle) == offset ? same : other) = middle;
    }
    return same;
  }
  return std::nullopt;
}

/// A half is rounded away from zero.
long TenthsOf(double value) { return std::lround(value * 10); }

QByteArray OneDecimal(double value) {
  const long tenths = TenthsOf(value);
  QByteArray text = tenths < 0 ? "-" : "";
  text += QByteArray::number(qlonglong{std::labs(tenths) / 10});
  text += '.';
  text += static_cast<char>('0' + std::labs(tenths) % 10);
  return text;
}

}  // namespace

QByteArray MagnitudeText(double magnitude) { return OneDecimal(magnitude); }

double ShownMagnitude(double magnitude) { return static_cast<double>(TenthsOf(magnitude)) / 10; }

QByteArray LatitudeText(double degrees) { return DegreesText(degrees, 'N', 'S'); }

QByteArray LongitudeText(double degrees) { return DegreesText(degrees, 'E', 'W'); }

QByteArray SignedDegreesText(double degrees) {
  const QByteArray text = ThreeDecimals(degrees);
  return text == "-0.000" ? "0.000" : text;
}

QByteArray DepthText(std::optional<double> kilometres) { return kilometres ? OneDecimal(*kilometres) : QByteArray(); }

QByteArray LocalTimeText(qint64 milliseconds) {
  const std::time_t second = SecondOf(milliseconds);
  std::tm moment = {};
  ::localtime_r(&second, &moment);
  return TimeText(moment);
}

QByteArray UtcTimeText(qint64 milliseconds) {
  const std::time_t second = SecondOf(milliseconds);
  std::tm moment = {};
  ::gmtime_r(&second, &moment);
  return TimeText(moment);
}

QByteArray ZoneText(qint64 milliseconds) { return OffsetText(OffsetAt(SecondOf(milliseconds))); }

QByteArray ZonesText(qint64 first, qint64 last) {
  QByteArray zone = ZoneText(last);
  const std::optional<std::time_t> change = LastChange(SecondOf(first), SecondOf(last));
  if (!change)
    return zone;
  if (LastChange(SecondOf(first), *change - 1))
    return zone + ", or the offset in force on the date";
  return zone + " (" + OffsetText(OffsetAt(*change - 1)) + " before " + UtcTimeText(qint64{*change} * 1000) + " UTC)";
}

}  // namespace borvane::mirror
