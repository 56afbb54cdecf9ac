#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace borvane {

/// A moment of the calendar and the clock, without a time zone: whole seconds since the base day, 30 December 1899,
/// midnight. The years go from 100 to 9999.
struct Date {
  std::int64_t seconds = 0;

  auto operator<=>(const Date &) const = default;
};

/// The parts of a Date.
struct CalendarTime {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

/// Joins the parts. Raises an invalid argument when they form no date of the Gregorian calendar.
Date MakeDate(const CalendarTime &parts);

/// Splits a date into its parts. Raises an invalid argument when its year is outside 100 to 9999.
CalendarTime PartsOf(Date date);

/// Reads `text` as a date: y/m/d, m/d/y or m-d-y with a year of four digits (0100 to 9999) and one or two for the
/// others; h:m or h:m:s with parts of one or two digits, from 0:00 to 23:59:59, or from 1 to 12 hours followed by
/// blanks and AM or PM in any case; a date, blanks and a time; blanks around. A time alone lies on the base day.
/// Nothing else is a date.
std::optional<Date> ParseDate(std::string_view text);

/// ParseDate that raises a type mismatch where there is no date.
Date DateValue(std::string_view text);

/// `date` by a pattern of these pieces: "yyyy", "mmm" (Jan), "mm", "ddd" (Mon), "dd", "hh", "ss", "ampm" (AM or PM;
/// "hh" then counts 01 to 12). "mm" is minutes when the piece before it is "hh", otherwise the month. Everything else
/// is kept as it is. Names are English. Raises an invalid argument when the year is outside 100 to 9999.
std::string FormatDate(Date date, std::string_view pattern);

/// FormatDate of a text; a text that is no date comes back unchanged.
std::string FormatDate(std::string_view text, std::string_view pattern);

}  // namespace borvane
