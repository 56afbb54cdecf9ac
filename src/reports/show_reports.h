#pragma once

#include <array>
#include <string>

namespace borvane {

/// The fields of the line that is being read. A short line leaves the fields of longer ones before it as they are.
using ReportFields = std::array<std::string, 11>;

/// Asks the service for all reports of the chosen area and adds those on the event of ComPart to its list: a row for
/// each zip code, with the mean of their magnitudes and their number. A failure ends it silently; the rows have sums
/// then, and no means.
void ShowReports(ReportFields &fields);

}  // namespace borvane
