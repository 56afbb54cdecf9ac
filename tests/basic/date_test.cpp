#include "basic/date.h"

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "support/failure_of.h"
#include "support/plain_calendar.h"
#include "support/plain_date.h"

namespace borvane {
namespace {

/// All parts of a date, for comparison.
std::string Shown(Date date) {
  const CalendarTime parts = PartsOf(date);
  std::string text;
  for (const int part : {parts.year, parts.month, parts.day, parts.hour, parts.minute, parts.second})
    text += (text.empty() ? "" : " ") + std::to_string(part);
  return text;
}

TEST(MakeDate, CountsSecondsFromTheBaseDay) {
  EXPECT_EQ(MakeDate({}).seconds, 0);
  EXPECT_EQ(MakeDate({1899, 12, 30, 0, 0, 1}).seconds, 1);
  EXPECT_EQ(MakeDate({1899, 12, 29, 23, 59, 59}).seconds, -1);
  EXPECT_EQ(MakeDate({1899, 12, 31, 1, 1, 1}).seconds, plain::seconds_a_day + 3661);
  EXPECT_EQ(MakeDate({1900, 1, 1, 0, 0, 0}).seconds, 2 * plain::seconds_a_day);
  EXPECT_EQ(MakeDate({1970, 1, 1, 0, 0, 0}).seconds, 25'569 * plain::seconds_a_day);
}

TEST(MakeDate, RaisesAnInvalidArgumentForWhatIsNoDate) {
  const std::vector<CalendarTime> wrong{
      {99, 12, 31, 0, 0, 0},   {10000, 1, 1, 0, 0, 0},
      {2024, 0, 1, 0, 0, 0},   {2024, 13, 1, 0, 0, 0},
      {2024, 1, 0, 0, 0, 0},   {2024, 1, 32, 0, 0, 0},
      {2024, 4, 31, 0, 0, 0},  {2023, 2, 29, 0, 0, 0},
      {1900, 2, 29, 0, 0, 0},  {2024, 1, 1, 24, 0, 0},
      {2024, 1, 1, -1, 0, 0},  {2024, 1, 1, 0, 60, 0},
      {2024, 1, 1, 0, -1, 0},  {2024, 1, 1, 0, 0, 60},
      {2024, 1, 1, 0, 0, -1},  {-1, 1, 1, 0, 0, 0},
      {2024, -1, 1, 0, 0, 0},  {2024, 1, -1, 0, 0, 0},
      {2024, 257, 1, 0, 0, 0}, {2024, 1, 257, 0, 0, 0},
      {67560, 1, 1, 0, 0, 0},  {std::numeric_limits<int>::max(), 1, 1, 0, 0, 0},
  };
  for (const CalendarTime &parts : wrong)
    EXPECT_EQ(FailureOf([&] { MakeDate(parts); }), invalid_argument)
        << parts.year << "/" << parts.month << "/" << parts.day << " " << parts.hour << ":" << parts.minute << ":"
        << parts.second;
}

TEST(Date, IsOrderedByTime) {
  const Date earlier = {.seconds = -1};
  const Date later = {.seconds = 1};
  EXPECT_TRUE(earlier < later);
  EXPECT_FALSE(later < earlier);
  EXPECT_TRUE(later > earlier);
  EXPECT_FALSE(earlier > earlier);
  EXPECT_TRUE(earlier <= earlier);
  EXPECT_TRUE(earlier == earlier);
  EXPECT_FALSE(earlier == later);
}

TEST(PartsOf, RaisesAnInvalidArgumentOutsideTheYears) {
  const Date first = MakeDate({100, 1, 1, 0, 0, 0});
  const Date last = MakeDate({9999, 12, 31, 23, 59, 59});
  EXPECT_EQ(Shown(first), "100 1 1 0 0 0");
  EXPECT_EQ(Shown(last), "9999 12 31 23 59 59");
  for (const std::int64_t seconds : {first.seconds - 1, last.seconds + 1, std::numeric_limits<std::int64_t>::min(),
                                     std::numeric_limits<std::int64_t>::max()})
    EXPECT_EQ(FailureOf([&] { PartsOf({seconds}); }), invalid_argument) << seconds;
}

TEST(MakeDate, AndPartsOfAgreeOnEveryDay) {
  std::int64_t seconds = -657'434 * plain::seconds_a_day;
  for (int year = 100; year <= 9999; ++year) {
    for (int month = 1; month <= 12; ++month) {
      for (int day = 1; day <= plain::DaysOfMonth(year, month); ++day, seconds += plain::seconds_a_day) {
        ASSERT_EQ(MakeDate({year, month, day, 0, 0, 0}).seconds, seconds) << year << "/" << month << "/" << day;
        const CalendarTime last = PartsOf({seconds + plain::seconds_a_day - 1});
        ASSERT_TRUE(last.year == year && last.month == month && last.day == day) << year << "/" << month << "/" << day;
        ASSERT_TRUE(last.hour == 23 && last.minute == 59 && last.second == 59) << year << "/" << month << "/" << day;
      }
    }
  }
}

TEST(MakeDate, AndPartsOfAgreeOnEverySecondOfADay) {
  for (const CalendarTime &start : {CalendarTime{1899, 12, 30, 0, 0, 0}, CalendarTime{1804, 2, 29, 0, 0, 0}}) {
    std::int64_t seconds = MakeDate(start).seconds;
    CalendarTime parts = start;
    for (parts.hour = 0; parts.hour < 24; ++parts.hour) {
      for (parts.minute = 0; parts.minute < 60; ++parts.minute) {
        for (parts.second = 0; parts.second < 60; ++parts.second, ++seconds) {
          ASSERT_EQ(MakeDate(parts).seconds, seconds);
          const CalendarTime found = PartsOf({seconds});
          ASSERT_TRUE(found.day == parts.day && found.hour == parts.hour && found.minute == parts.minute &&
                      found.second == parts.second)
              << seconds;
        }
      }
    }
  }
}

TEST(FormatDate, WritesAShortDay) {
  EXPECT_EQ(FormatDate("2009/02/06", "ddd dd"), "Fri 06");
  EXPECT_EQ(FormatDate("2/29/2000", "ddd dd"), "Tue 29");
}

TEST(FormatDate, WritesALongDay) {
  EXPECT_EQ(FormatDate("2009/02/06", "mmm ddd dd, yyyy"), "Feb Fri 06, 2009");
  EXPECT_EQ(FormatDate("1/1/0100", "mmm ddd dd, yyyy"), "Jan Fri 01, 0100");
  EXPECT_EQ(FormatDate("12/31/9999", "mmm ddd dd, yyyy"), "Dec Fri 31, 9999");
}

TEST(FormatDate, WritesAMoment) {
  constexpr std::string_view moment_pattern = "mm/dd/yyyy hh:mm:ss ampm";
  EXPECT_EQ(FormatDate("2024/05/06 13:20:30", moment_pattern), "05/06/2024 01:20:30 PM");
  EXPECT_EQ(FormatDate("05-06-2024 10:20:5", moment_pattern), "05/06/2024 10:20:05 AM");
  EXPECT_EQ(FormatDate("05-06-2024", moment_pattern), "05/06/2024 12:00:00 AM");
  EXPECT_EQ(FormatDate("05-06-2024 12:00", moment_pattern), "05/06/2024 12:00:00 PM");
  EXPECT_EQ(FormatDate("05-06-2024 11:59:59", moment_pattern), "05/06/2024 11:59:59 AM");
  EXPECT_EQ(FormatDate("05-06-2024 23:59:59", moment_pattern), "05/06/2024 11:59:59 PM");
  EXPECT_EQ(FormatDate("10:20", moment_pattern), "12/30/1899 10:20:00 AM");
}

TEST(FormatDate, WritesAMonthAndADay) { EXPECT_EQ(FormatDate("2024/05/06", "mmm dd"), "May 06"); }

TEST(FormatDate, ReturnsATextThatIsNoDateUnchanged) {
  for (const std::string text : {"", "Date", "2024-05-06", "2/29/1900", "05-06-2024 10:20:-1", " x "}) {
    EXPECT_EQ(FormatDate(text, "mm/dd/yyyy hh:mm:ss ampm"), text);
    EXPECT_EQ(FormatDate(text, "ddd dd"), text);
  }
}

TEST(FormatDate, NamesEveryMonthAndDay) {
  const std::array<std::string, 12> months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                           "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  for (int month = 1; month <= 12; ++month)
    EXPECT_EQ(FormatDate(MakeDate({2024, month, 1, 0, 0, 0}), "mmm"), months.at(static_cast<std::size_t>(month - 1)));
  const std::array<std::string, 7> days{"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
  for (int day = 1; day <= 7; ++day)
    EXPECT_EQ(FormatDate(MakeDate({2024, 1, day, 0, 0, 0}), "ddd"), days.at(static_cast<std::size_t>(day - 1)));
}

TEST(FormatDate, NamesTheDaysOfEachWeekInOrder) {
  // The base day was a Saturday. From four centuries before it to four centuries after it.
  const std::array<std::string, 7> days{"Sat", "Sun", "Mon", "Tue", "Wed", "Thu", "Fri"};
  for (std::int64_t day = -146'097; day <= 146'097; ++day) {
    const auto place = static_cast<std::size_t>(((day % 7) + 7) % 7);
    ASSERT_EQ(FormatDate(Date{day * plain::seconds_a_day + plain::seconds_a_day - 1}, "ddd"), days.at(place)) << day;
  }
}

TEST(FormatDate, UsesTwentyFourHoursWithoutAmAndPm) {
  EXPECT_EQ(FormatDate("13:20:30", "hh:mm:ss"), "13:20:30");
  EXPECT_EQ(FormatDate("0:20", "hh:mm:ss"), "00:20:00");
  EXPECT_EQ(FormatDate("13:20:30", "ampm hh:mm"), "PM 01:20");
}

TEST(FormatDate, ReadsMinutesOnlyAfterTheHours) {
  EXPECT_EQ(FormatDate("2024/05/06 10:20:30", "hh:mm"), "10:20");
  EXPECT_EQ(FormatDate("2024/05/06 10:20:30", "mm hh"), "05 10");
  EXPECT_EQ(FormatDate("2024/05/06 10:20:30", "hhmmmm"),
            "10May"
            "m");
  EXPECT_EQ(FormatDate("2024/05/06 10:20:30", "hh:mm mm"), "10:20 05");
  EXPECT_EQ(FormatDate("2024/05/06 10:20:30", "hh dd mm"), "10 06 05");
  EXPECT_EQ(FormatDate("2024/05/06 10:20:30", "hh (h, m) mm"), "10 (h, m) 20");
}

TEST(FormatDate, LeavesEverythingElseAsItIs) {
  EXPECT_EQ(FormatDate("2024/05/06", ""), "");
  EXPECT_EQ(FormatDate("2024/05/06", "d m y h s yy YYYY MM Day, %d \\ \" \xE9"),
            "d m y h s yy YYYY MM Day, %d \\ \" \xE9");
  EXPECT_EQ(FormatDate("2024/05/06", "dddd"), "Mond");
  EXPECT_EQ(FormatDate("2024/05/06", "yyyyy"), "2024y");
  EXPECT_EQ(FormatDate("2024/05/06", "AMPM am/pm"), "AMPM am/pm");
}

TEST(FormatDate, RaisesAnInvalidArgumentOutsideTheYears) {
  EXPECT_EQ(FailureOf([] { FormatDate(Date{std::numeric_limits<std::int64_t>::max()}, "dd"); }), invalid_argument);
}

TEST(FormatDate, IsReadBackForEverySecondOfADay) {
  const Date start = MakeDate({2024, 2, 29, 0, 0, 0});
  for (std::int64_t second = 0; second < plain::seconds_a_day; ++second) {
    const Date date{start.seconds + second};
    const std::string halves = FormatDate(date, "mm/dd/yyyy hh:mm:ss ampm");
    ASSERT_EQ(ParseDate(halves), date) << halves;
    const std::string plain = FormatDate(date, "yyyy/mm/dd hh:mm:ss");
    ASSERT_EQ(ParseDate(plain), date) << plain;
  }
}

}  // namespace
}  // namespace borvane
