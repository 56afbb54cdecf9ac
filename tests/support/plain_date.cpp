#include "support/plain_date.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include "support/plain_calendar.h"

namespace borvane::plain {

namespace {

/// Days from 1 January 100.
std::int64_t Days(int year, int month, int day) {
  std::int64_t days = day - 1;
  for (int y = 100; y < year; ++y)
    days += IsLeapYear(y) ? 366 : 365;
  for (int m = 1; m < month; ++m)
    days += DaysOfMonth(year, m);
  return days;
}

std::vector<std::string> Split(const std::string &text, char separator) {
  std::vector<std::string> fields{""};
  for (const char c : text) {
    if (c == separator)
      fields.emplace_back();
    else
      fields.back() += c;
  }
  return fields;
}

bool IsNumber(const std::string &field, std::size_t fewest, std::size_t most) {
  return field.size() >= fewest && field.size() <= most && field.find_first_not_of("0123456789") == std::string::npos;
}

std::string Capitals(std::string word) {
  for (char &c : word) {
    if (c >= 'a' && c <= 'z')
      c = static_cast<char>(c - 'a' + 'A');
  }
  return word;
}

/// Seconds from the base day to the day of `word`.
std::optional<std::int64_t> ReadDay(const std::string &word) {
  const char separator = word.find('/') != std::string::npos ? '/' : '-';
  std::vector<std::string> fields = Split(word, separator);
  if (fields.size() != 3)
    return std::nullopt;
  if (separator == '/' && fields[0].size() == 4)
    fields = {fields[1], fields[2], fields[0]};
  if (!IsNumber(fields[0], 1, 2) || !IsNumber(fields[1], 1, 2) || !IsNumber(fields[2], 4, 4))
    return std::nullopt;
  const int month = std::stoi(fields[0]);
  const int day = std::stoi(fields[1]);
  const int year = std::stoi(fields[2]);
  if (year < 100 || month < 1 || month > 12 || day < 1 || day > DaysOfMonth(year, month))
    return std::nullopt;
  return (Days(year, month, day) - Days(1899, 12, 30)) * seconds_a_day;
}

/// Seconds from midnight to the time of `word`; `half` is AM, PM or empty.
std::optional<std::int64_t> ReadTime(const std::string &word, const std::string &half) {
  std::vector<std::string> fields = Split(word, ':');
  if (fields.size() == 2)
    fields.emplace_back("0");
  if (fields.size() != 3)
    return std::nullopt;
  for (const std::string &field : fields) {
    if (!IsNumber(field, 1, 2))
      return std::nullopt;
  }
  int hour = std::stoi(fields[0]);
  if (hour > 23 || std::stoi(fields[1]) > 59 || std::stoi(fields[2]) > 59)
    return std::nullopt;
  if (!half.empty() && (hour == 0 || hour > 12))
    return std::nullopt;
  if (half == "AM" && hour == 12)
    hour = 0;
  if (half == "PM" && hour != 12)
    hour += 12;
  return hour * 3600 + std::stoi(fields[1]) * 60 + std::stoi(fields[2]);
}

}  // namespace

std::optional<Date> ParseDate(const std::string &text) {
  std::vector<std::string> words = Split(text, ' ');
  std::erase(words, "");
  std::optional<std::int64_t> seconds;
  if (!words.empty() && words[0].find_first_of("/-") != std::string::npos) {
    seconds = ReadDay(words[0]);
    words.erase(words.begin());
    if (!seconds)
      return std::nullopt;
  }
  if (!words.empty()) {
    const std::string half = words.size() == 2 ? Capitals(words[1]) : "";
    if (words.size() != 1 && half != "AM" && half != "PM")
      return std::nullopt;
    const std::optional<std::int64_t> time = ReadTime(words[0], half);
    if (!time)
      return std::nullopt;
    seconds = seconds.value_or(0) + *time;
  }
  return seconds ? std::optional(Date{*seconds}) : std::nullopt;
}

}  // namespace borvane::plain
