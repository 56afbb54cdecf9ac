#include "basic/date.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "basic/failure.h"
#include "basic/number.h"
#include "basic/text.h"

namespace borvane {

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr int first_year = 100;
constexpr int last_year = 9999;

constexpr std::int64_t seconds_a_minute = 60;
constexpr std::int64_t seconds_an_hour = 60 * seconds_a_minute;
constexpr std::int64_t seconds_a_day = 24 * seconds_an_hour;

constexpr sys_days base_day{std::chrono::year{1899} / 12 / 30};

constexpr std::int64_t SecondsUpTo(sys_days day) { return (day - base_day).count() * seconds_a_day; }

sys_days DayOf(Date date) {
  constexpr std::int64_t first = SecondsUpTo(sys_days{std::chrono::year{first_year} / 1 / 1});
  constexpr std::int64_t end = SecondsUpTo(sys_days{std::chrono::year{last_year + 1} / 1 / 1});
  if (date.seconds < first || date.seconds >= end)
    Fail(Failure::InvalidArgument);
  return base_day + std::chrono::floor<std::chrono::days>(std::chrono::seconds{date.seconds});
}

bool IsWithin(int value, int lowest, int highest) { return value >= lowest && value <= highest; }

/// The date of the parts, if they form one.
std::optional<Date> DateOf(const CalendarTime &parts) {
  const bool fits = IsWithin(parts.year, first_year, last_year) && IsWithin(parts.month, 1, 12) &&
                    IsWithin(parts.day, 1, 31) && IsWithin(parts.hour, 0, 23) && IsWithin(parts.minute, 0, 59) &&
                    IsWithin(parts.second, 0, 59);
  if (!fits)
    return std::nullopt;
  const year_month_day day{std::chrono::year{parts.year}, std::chrono::month{static_cast<unsigned>(parts.month)},
                           std::chrono::day{static_cast<unsigned>(parts.day)}};
  if (!day.ok())
    return std::nullopt;
  return Date{SecondsUpTo(day) + parts.hour * seconds_an_hour + parts.minute * seconds_a_minute + parts.second};
}

// Reading. Each Take procedure removes what it names from the front of the text; if that isn't there, it returns false,
// and how much of the text is gone does not matter, since the whole is no date then.

bool TakeChar(std::string_view &text, char c) {
  if (!text.starts_with(c))
    return false;
  text.remove_prefix(1);
  return true;
}

/// Takes that letter, given as a capital, in either case.
bool TakeLetter(std::string_view &text, char capital) {
  constexpr char to_small = 'a' - 'A';
  return TakeChar(text, capital) || TakeChar(text, static_cast<char>(capital + to_small));
}

bool TakeBlanks(std::string_view &text) {
  const std::size_t count = std::min(text.find_first_not_of(' '), text.size());
  text.remove_prefix(count);
  return count > 0;
}

struct Number {
  int value = 0;
  int digits = 0;
};

/// Takes one to four digits; nothing of a date or a time has more.
std::optional<Number> TakeNumber(std::string_view &text) {
  Number number;
  for (; number.digits < 4 && !text.empty() && IsWithin(text.front(), '0', '9'); text.remove_prefix(1)) {
    number.value = number.value * 10 + (text.front() - '0');
    ++number.digits;
  }
  if (number.digits == 0)
    return std::nullopt;
  return number;
}

/// Takes one or two digits.
bool TakePart(std::string_view &text, int &part) {
  const std::optional<Number> number = TakeNumber(text);
  if (!number || number->digits > 2)
    return false;
  part = number->value;
  return true;
}

/// Takes y/m/d, m/d/y or m-d-y.
bool TakeDay(std::string_view &text, CalendarTime &parts) {
  const std::optional<Number> first = TakeNumber(text);
  const char separator = text.starts_with('-') ? '-' : '/';
  if (!first || !TakeChar(text, separator))
    return false;

  if (first->digits == 4) {
    parts.year = first->value;
    return separator == '/' && TakePart(text, parts.month) && TakeChar(text, '/') && TakePart(text, parts.day);
  }

  parts.month = first->value;
  if (first->digits > 2 || !TakePart(text, parts.day) || !TakeChar(text, separator))
    return false;
  const std::optional<Number> year = TakeNumber(text);
  if (!year || year->digits != 4)
    return false;
  parts.year = year->value;
  return true;
}

/// Takes blanks and AM or PM in any case, and puts the hour into the right half of the day.
bool TakeHalfOfDay(std::string_view &text, CalendarTime &parts) {
  if (!TakeBlanks(text) || !IsWithin(parts.hour, 1, 12))
    return false;
  const bool afternoon = TakeLetter(text, 'P');
  if (!afternoon && !TakeLetter(text, 'A'))
    return false;
  parts.hour = parts.hour % 12 + (afternoon ? 12 : 0);
  return TakeLetter(text, 'M');
}

/// Takes h:m or h:m:s, and AM or PM when something is left.
bool TakeTime(std::string_view &text, CalendarTime &parts) {
  if (!TakePart(text, parts.hour) || !TakeChar(text, ':') || !TakePart(text, parts.minute))
    return false;
  if (TakeChar(text, ':') && !TakePart(text, parts.second))
    return false;
  return text.empty() || TakeHalfOfDay(text, parts);
}

/// Reads all of `text`, which has no blanks around it.
bool ReadParts(std::string_view text, CalendarTime &parts) {
  if (text.find_first_of("/-") != std::string_view::npos) {
    if (!TakeDay(text, parts))
      return false;
    if (text.empty())
      return true;
    if (!TakeBlanks(text))
      return false;
  }
  return TakeTime(text, parts) && text.empty();
}

// Writing.

std::string NameAt(std::string_view names, unsigned index) { return std::string(names.substr(index * 3, 3)); }

std::string Padded(int value, std::size_t width) {
  const std::string text = IntegerText(value);
  return std::string(width - std::min(width, text.size()), '0') + text;
}

/// The pieces of a pattern, a longer one before its own beginning.
constexpr std::array<std::string_view, 8> pieces{"yyyy", "ampm", "mmm", "ddd", "mm", "dd", "hh", "ss"};

class Formatter {
 public:
  Formatter(Date date, std::string_view pattern)
      : parts_(PartsOf(date)), weekday_(DayOf(date)), rest_(pattern), half_days_(Find(pattern, "ampm") != 0) {}

  std::string Run() {
    std::string text;
    while (!rest_.empty()) {
      const auto piece = std::find_if(pieces.begin(), pieces.end(), [&](auto p) { return rest_.starts_with(p); });
      const std::size_t length = piece == pieces.end() ? 1 : piece->size();
      text += piece == pieces.end() ? std::string(1, rest_.front()) : TextOf(*piece);
      rest_.remove_prefix(length);
    }
    return text;
  }

 private:
  std::string TextOf(std::string_view piece) {
    const bool after_hours = after_hours_;
    after_hours_ = piece == "hh";
    if (piece == "yyyy")
      return Padded(parts_.year, 4);
    if (piece == "ampm")
      return parts_.hour < 12 ? "AM" : "PM";
    if (piece == "mmm")
      return NameAt("JanFebMarAprMayJunJulAugSepOctNovDec", static_cast<unsigned>(parts_.month) - 1);
    if (piece == "ddd")
      return NameAt("SunMonTueWedThuFriSat", weekday_.c_encoding());
    if (piece == "mm")
      return Padded(after_hours ? parts_.minute : parts_.month, 2);
    if (piece == "dd")
      return Padded(parts_.day, 2);
    if (piece == "hh")
      return Padded(half_days_ ? (parts_.hour + 11) % 12 + 1 : parts_.hour, 2);
    return Padded(parts_.second, 2);
  }

  CalendarTime parts_;
  std::chrono::weekday weekday_;
  std::string_view rest_;
  bool half_days_;
  bool after_hours_ = false;
};

}  // namespace

Date MakeDate(const CalendarTime &parts) {
  const std::optional<Date> date = DateOf(parts);
  if (!date)
    Fail(Failure::InvalidArgument);
  return *date;
}

CalendarTime PartsOf(Date date) {
  const sys_days day_number = DayOf(date);
  const year_month_day day{day_number};
  const std::int64_t rest = date.seconds - SecondsUpTo(day_number);
  return {static_cast<int>(day.year()),
          static_cast<int>(static_cast<unsigned>(day.month())),
          static_cast<int>(static_cast<unsigned>(day.day())),
          static_cast<int>(rest / seconds_an_hour),
          static_cast<int>(rest % seconds_an_hour / seconds_a_minute),
          static_cast<int>(rest % seconds_a_minute)};
}

std::optional<Date> ParseDate(std::string_view text) {
  CalendarTime parts;
  if (!ReadParts(Trim(text), parts))
    return std::nullopt;
  return DateOf(parts);
}

Date DateValue(std::string_view text) {
  const std::optional<Date> date = ParseDate(text);
  if (!date)
    Fail(Failure::TypeMismatch);
  return *date;
}

std::string FormatDate(Date date, std::string_view pattern) { return Formatter(date, pattern).Run(); }

std::string FormatDate(std::string_view text, std::string_view pattern) {
  const std::optional<Date> date = ParseDate(text);
  return date ? FormatDate(*date, pattern) : std::string(text);
}

}  // namespace borvane
