#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace borvane {

/// A moment of the calendar and the clock as they stand, without a time zone: whole seconds since the base day, 30
/// December 1899, midnight.
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

/// Joins the parts; they must form a date of the Gregorian calendar.
Date MakeDate(const CalendarTime &parts);

/// Takes a date apart.
CalendarTime PartsOf(Date date);

/// Reads `text` as a date: y/m/d, m/d/y or m-d-y with a year of four digits (100 to 9999); h:m or h:m:s with parts of
/// one or two digits, " AM" or " PM" behind it; a date, blanks and a time; blanks around. A time alone lies on the base
/// day. Nothing else is a date.
std::optional<Date> ParseDate(std::string_view text);

/// ParseDate that raises a type mismatch where there is no date.
Date DateValue(std::string_view text);

/// `date` by a pattern of these pieces: "yyyy", "mmm" (Jan), "mm", "ddd" (Mon), "dd", "hh", "ss", "ampm" (AM or PM;
/// "hh" then counts 01 to 12). "mm" behind "hh" is minutes. Everything else stands as it is. Names are English.
std::string FormatDate(Date date, std::string_view pattern);

/// FormatDate of a text; a text that is no date comes back unchanged.
std::string FormatDate(std::string_view text, std::string_view pattern);

}  // namespace borvane
