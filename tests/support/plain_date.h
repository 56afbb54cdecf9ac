#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "basic/date.h"

namespace borvane::plain {

constexpr std::int64_t seconds_a_day = 86'400;

/// The rule of a date's text again, by splitting it into words and these into fields. A reference for the quick reader.
std::optional<Date> ParseDate(const std::string &text);

}  // namespace borvane::plain
