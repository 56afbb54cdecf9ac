#pragma once

#include <string>

#include "controls/list_view.h"
#include "reports/show_reports.h"

namespace borvane::plain {

/// Adds the reports on `event` to the rows again, slow and plain: for each line all rows are looked through. A
/// reference for the reader that finds them by their zip codes. `separator` is the region's. What fails ends it
/// silently.
void AddReports(const std::string &answer, const std::string &event, ReportFields &fields, ListRows &rows,
                char separator);

}  // namespace borvane::plain
