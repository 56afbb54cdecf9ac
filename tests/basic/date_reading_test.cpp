#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "basic/date.h"
#include "support/failure_of.h"
#include "support/plain_date.h"

namespace borvane {
namespace {

/// All parts of a date, for comparison; "none" for no date.
std::string Shown(std::optional<Date> date) {
  if (!date)
    return "none";
  const CalendarTime parts = PartsOf(*date);
  std::string text;
  for (const int part : {parts.year, parts.month, parts.day, parts.hour, parts.minute, parts.second})
    text += (text.empty() ? "" : " ") + std::to_string(part);
  return text;
}

std::string Read(std::string_view text) { return Shown(ParseDate(text)); }

TEST(ParseDate, ReadsYearMonthDay) {
  EXPECT_EQ(Read("2024/05/06"), "2024 5 6 0 0 0");
  EXPECT_EQ(Read("2024/5/6"), "2024 5 6 0 0 0");
  EXPECT_EQ(Read("2024/12/31"), "2024 12 31 0 0 0");
}

TEST(ParseDate, ReadsMonthDayYear) {
  EXPECT_EQ(Read("05/06/2024"), "2024 5 6 0 0 0");
  EXPECT_EQ(Read("5/6/2024"), "2024 5 6 0 0 0");
  EXPECT_EQ(Read("05-06-2024"), "2024 5 6 0 0 0");
  EXPECT_EQ(Read("5-6-2024"), "2024 5 6 0 0 0");
}

TEST(ParseDate, ReadsNoOtherOrder) {
  for (const char *text : {"2024-05-06", "2024-5-6", "2024/13/01", "13/01/2024", "13-01-2024", "31/12/2024", "5/6",
                           "05-06", "2024/5", "2024", "5/2024", "5/2024/6", "2024/6/2024"})
    EXPECT_EQ(Read(text), "none") << text;
}

TEST(ParseDate, ReadsNoOtherOrMixedSeparators) {
  for (const char *text : {"5/6-2024", "5-6/2024", "2024/5-6", "5.6.2024", "5 6 2024", "5//6/2024", "/5/6/2024",
                           "5/6/2024/", "5-6-2024-", "-5-6-2024", "5/-6/2024", "5/6/-2024", "5,6,2024"})
    EXPECT_EQ(Read(text), "none") << text;
}

TEST(ParseDate, RequiresAYearOfFourDigits) {
  EXPECT_EQ(Read("1/1/0100"), "100 1 1 0 0 0");
  EXPECT_EQ(Read("12/31/9999"), "9999 12 31 0 0 0");
  for (const char *text : {"5/6/24", "5/6/024", "5/6/02024", "24/5/6", "924/5/6", "02024/5/6", "5-6-24", "1/1/0099",
                           "1/1/0000", "0099/1/1", "1/1/10000"})
    EXPECT_EQ(Read(text), "none") << text;
}

TEST(ParseDate, RequiresOneOrTwoDigitsForMonthAndDay) {
  for (const char *text : {"005/6/2024", "5/006/2024", "2024/005/6", "2024/5/006", "//2024", "2024//6", "2024/5/"})
    EXPECT_EQ(Read(text), "none") << text;
}

TEST(ParseDate, RequiresADayOfTheCalendar) {
  for (const char *text : {"0/1/2024", "1/0/2024", "00/00/2024", "1/32/2024", "4/31/2024", "6/31/2024", "9/31/2024",
                           "11/31/2024", "2/30/2024", "99/99/2024"})
    EXPECT_EQ(Read(text), "none") << text;
  EXPECT_EQ(Read("4/30/2024"), "2024 4 30 0 0 0");
}

TEST(ParseDate, AcceptsLeapDays) {
  EXPECT_EQ(Read("2/29/2000"), "2000 2 29 0 0 0");
  EXPECT_EQ(Read("2/29/2024"), "2024 2 29 0 0 0");
  EXPECT_EQ(Read("2/29/1900"), "none");
  EXPECT_EQ(Read("2/29/2100"), "none");
  EXPECT_EQ(Read("2/29/2023"), "none");
}

TEST(ParseDate, ReadsATimeOnTheBaseDay) {
  EXPECT_EQ(Read("10:20"), "1899 12 30 10 20 0");
  EXPECT_EQ(Read("10:20:30"), "1899 12 30 10 20 30");
  EXPECT_EQ(Read("1:2:3"), "1899 12 30 1 2 3");
  EXPECT_EQ(Read("01:02:03"), "1899 12 30 1 2 3");
  EXPECT_EQ(Read("0:0"), "1899 12 30 0 0 0");
  EXPECT_EQ(Read("23:59:59"), "1899 12 30 23 59 59");
}

TEST(ParseDate, RequiresATimeOfTheClock) {
  for (const char *text : {"24:00",    "24:00:00",    "10:60",  "10:20:60",  "99:99", "10:20:-1",   "10:-1", "-1:20",
                           "10:20:+1", "010:20",      "10:020", "10:20:030", "10",    "10:",        ":20",   "10:20:",
                           "10::20",   "10:20:30:40", "10 :20", "10: 20",    "10.20", "10:20:30.5", "10h20"})
    EXPECT_EQ(Read(text), "none") << text;
}

TEST(ParseDate, ReadsAmAndPm) {
  EXPECT_EQ(Read("1:02 AM"), "1899 12 30 1 2 0");
  EXPECT_EQ(Read("1:02 PM"), "1899 12 30 13 2 0");
  EXPECT_EQ(Read("01:02:03 PM"), "1899 12 30 13 2 3");
  EXPECT_EQ(Read("11:59:59 PM"), "1899 12 30 23 59 59");
  EXPECT_EQ(Read("12:00 AM"), "1899 12 30 0 0 0");
  EXPECT_EQ(Read("12:30 AM"), "1899 12 30 0 30 0");
  EXPECT_EQ(Read("12:30 PM"), "1899 12 30 12 30 0");
  EXPECT_EQ(Read("1:02   PM"), "1899 12 30 13 2 0");
  for (const char *morning : {"12:30 am", "12:30 Am", "12:30 aM"})
    EXPECT_EQ(Read(morning), "1899 12 30 0 30 0");
  for (const char *afternoon : {"1:02 pm", "1:02 Pm", "1:02 pM"})
    EXPECT_EQ(Read(afternoon), "1899 12 30 13 2 0");
}

TEST(ParseDate, RequiresABlankBeforeAmAndPm) {
  for (const char *text :
       {"1:02AM", "1:02PM", "1:02am", "1:02 A", "1:02 a", "1:02 a\xCD", "1:02 !M", "1:02 P", "1:02 M", "1:02 A M",
        "1:02 XM", "1:02 AMX", "1:02 AM PM", "1:02\tAM", "1:02 PP", "AM", "1 AM", "AM 1:02", "5/6/2024 AM"})
    EXPECT_EQ(Read(text), "none") << text;
}

TEST(ParseDate, RequiresAnHourFromOneToTwelveWithAmAndPm) {
  for (const char *text : {"0:30 AM", "00:30 PM", "13:00 PM", "13:00 AM", "23:00 PM", "24:00 AM"})
    EXPECT_EQ(Read(text), "none") << text;
}

TEST(ParseDate, ReadsADateBlanksAndATime) {
  EXPECT_EQ(Read("2024/05/06 10:20:30"), "2024 5 6 10 20 30");
  EXPECT_EQ(Read("05/06/2024 01:20:30 PM"), "2024 5 6 13 20 30");
  EXPECT_EQ(Read("05-06-2024 10:20:5"), "2024 5 6 10 20 5");
  EXPECT_EQ(Read("5/6/2024     1:2"), "2024 5 6 1 2 0");
}

TEST(ParseDate, AllowsOnlyBlanksBetweenDateAndTime) {
  for (const char *text :
       {"5/6/202410:20", "5/6/2024,10:20", "5/6/2024, 10:20", "5/6/2024T10:20", "5/6/2024\t10:20", "5/6/2024 at 10:20",
        "5/6/2024 x", "5/6/2024 10", "5/6/2024 5/6/2024", "10:20 5/6/2024", "10:20 5-6-2024"})
    EXPECT_EQ(Read(text), "none") << text;
}

TEST(ParseDate, ReadsNoTwoTimes) {
  for (const char *text : {"10:20 10:20", "5/6/2024 10:20:30 10:20:30", "5/6/2024 10:20:30 AM 10:20:30 AM"})
    EXPECT_EQ(Read(text), "none") << text;
}

TEST(ParseDate, ReadsNoSecondsBelowZero) {
  EXPECT_EQ(Read("05-06-2024 10:20:-1"), "none");
  EXPECT_EQ(Read("05-06-2024 10:20:0"), "2024 5 6 10 20 0");
}

TEST(ParseDate, AllowsBlanksAround) {
  EXPECT_EQ(Read("  2024/05/06   "), "2024 5 6 0 0 0");
  EXPECT_EQ(Read(" 10:20 "), "1899 12 30 10 20 0");
  EXPECT_EQ(Read(" 5/6/2024 1:02 PM "), "2024 5 6 13 2 0");
}

TEST(ParseDate, ReadsNothingElse) {
  using namespace std::string_view_literals;
  for (const std::string_view text :
       {""sv,           " "sv,           "   "sv,        "today"sv,      "Mag"sv,
        "N/A"sv,        "May 6, 2024"sv, "6 May 2024"sv, "20240506"sv,   "45000"sv,
        "\t5/6/2024"sv, "5/6/2024\n"sv,  "5/6/2024\r"sv, "5/6/2024\0"sv, "5/6/2024x"sv,
        "x5/6/2024"sv,  "\xB2/6/2024"sv, "5/6/2024 Z"sv, "10:20 UTC"sv,  "/"sv,
        "-"sv,          ":"sv,           "5/ 6/2024"sv,  "5 /6/2024"sv,  "4294967297/1/2024"sv})
    EXPECT_EQ(Read(text), "none") << text;
}

TEST(ParseDate, RefusesAMegabyteOfDigits) {
  const std::string digits(1'000'000, '1');
  EXPECT_EQ(Read(digits), "none");
  EXPECT_EQ(Read(digits + "/1/2024"), "none");
  EXPECT_EQ(Read("1/1/2024 " + digits + ":00"), "none");
  EXPECT_EQ(Read("1/1/2024" + std::string(1'000'000, ' ') + "10:00"), "2024 1 1 10 0 0");
}

TEST(DateValue, IsTheDate) { EXPECT_EQ(DateValue("12/31/1899"), Date{plain::seconds_a_day}); }

TEST(DateValue, RaisesATypeMismatchForWhatIsNoDate) {
  for (const char *text : {"", "abc", "2/29/1900", "10:20:-1"})
    EXPECT_EQ(FailureOf([&] { DateValue(text); }), type_mismatch) << text;
}

/// `text` with one character removed, inserted or changed, in every way.
std::set<std::string> Variants(const std::string &text) {
  std::set<std::string> variants;
  for (std::size_t i = 0; i <= text.size(); ++i) {
    for (const char c : std::string_view("0129/-: APMapmx\t")) {
      variants.insert(std::string(text).insert(i, 1, c));
      if (i < text.size())
        variants.insert(std::string(text).replace(i, 1, 1, c));
    }
    if (i < text.size())
      variants.insert(std::string(text).erase(i, 1));
  }
  return variants;
}

TEST(ParseDate, AgreesWithThePlainRuleOnTextsNearADate) {
  int dates = 0;
  int others = 0;
  for (const char *date : {"2024/02/29", "2/9/2024", "12-30-1899", "1-1-0100", "10:20", "1:2:3", "12:59:59 PM",
                           "9:05 AM", "2024/1/31 23:59", "12/31/9999 11:20:30  AM", " 02-28-1900  0:00:00 "}) {
    ASSERT_NE(Read(date), "none") << date;
    for (const std::string &text : Variants(date)) {
      const std::optional<Date> expected = plain::ParseDate(text);
      ASSERT_EQ(Read(text), Shown(expected)) << "'" << text << "'";
      ++(expected ? dates : others);
    }
  }
  EXPECT_GT(dates, 300);
  EXPECT_GT(others, 2000);
}

TEST(ParseDate, AgreesWithThePlainRuleOnTextsFartherFromADate) {
  for (const char *date : {"2024/02/29", "1:2:3 PM", "9-1-1900 9:00"}) {
    for (const std::string &near : Variants(date)) {
      for (const std::string &text : Variants(near))
        ASSERT_EQ(ParseDate(text), plain::ParseDate(text)) << "'" << text << "'";
    }
  }
}

TEST(ParseDate, AgreesWithThePlainRuleOnEveryShortText) {
  std::string text;
  const auto walk = [&](const auto &self, std::size_t length) -> void {
    ASSERT_EQ(ParseDate(text), plain::ParseDate(text)) << "'" << text << "'";
    if (length == 0)
      return;
    for (const char *token : {"1", "59", "2000", "/", "-", ":", " ", "AM"}) {
      const std::size_t before = text.size();
      text += token;
      ASSERT_NO_FATAL_FAILURE(self(self, length - 1));
      text.resize(before);
    }
  };
  walk(walk, 6);
}

}  // namespace
}  // namespace borvane
