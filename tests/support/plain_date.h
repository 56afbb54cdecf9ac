#pragma once

#include <optional>
#include <string>

#include "basic/date.h"

namespace borvane::plain {

/// The rule of a date's text once more, by cutting it into words and these into fields. It judges the quick reader.
std::optional<Date> ParseDate(const std::string &text);

}  // namespace borvane::plain
