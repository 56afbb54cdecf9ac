#pragma once

#include <optional>
#include <string>

#include "basic/date.h"

namespace borvane::plain {

/// The rule of a date's text again, by splitting it into words and these into fields. A reference for the quick reader.
std::optional<Date> ParseDate(const std::string &text);

}  // namespace borvane::plain
