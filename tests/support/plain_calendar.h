#pragma once

/// The calendar by plain counting, as a reference for the quick one.
namespace borvane::plain {

inline bool IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

inline int DaysOfMonth(int year, int month) {
  if (month == 2)
    return IsLeapYear(year) ? 29 : 28;
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

}  // namespace borvane::plain
