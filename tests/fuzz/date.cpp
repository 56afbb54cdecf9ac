#include "basic/date.h"

#include <cstdint>
#include <cstdlib>
#include <string>

#include "basic/failure.h"
#include "support/plain_date.h"

// Any text as a date: the quick rule and the plain rule agree on it; a date that is written can be read back; and a
// text that is not a date is returned unchanged.

namespace {

using namespace borvane;

void Require(bool fact) {
  if (!fact)
    std::abort();
}

/// The plain rule is slow for longer texts.
constexpr std::size_t longest = 200;

/// Any text is a pattern, too.
void CheckPattern(Date date, const std::string &pattern) {
  const std::string text = FormatDate(date, pattern);
  if (pattern.find_first_of("ymdhsa") == std::string::npos)
    Require(text == pattern);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string text(reinterpret_cast<const char *>(data), size);
  if (size > longest)
    return 0;

  const std::optional<Date> date = ParseDate(text);
  Require(date == plain::ParseDate(text));
  if (!date) {
    Require(FormatDate(text, "ddd dd") == text);
    CheckPattern(Date{}, text);
    return 0;
  }
  Require(MakeDate(PartsOf(*date)) == *date);
  Require(ParseDate(FormatDate(*date, "yyyy/mm/dd hh:mm:ss")) == *date);
  Require(ParseDate(FormatDate(*date, "mm/dd/yyyy hh:mm:ss ampm")) == *date);
  Require(FormatDate(text, "ddd dd").size() == 6);
  return 0;
}
