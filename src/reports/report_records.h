#pragma once

#include <string>

namespace borvane {

struct ReportForm;

// The two records of a felt report, with "|" between their fields. Nothing in them is escaped.

/// Version, event key, age, felt magnitude, whether scared, whether at school, zip code: what others get to see.
std::string SummaryRecord(ReportForm &form, float magnitude);

/// Version and, after an empty field, all answers but the name.
std::string DetailRecord(ReportForm &form);

}  // namespace borvane
