#pragma once

#include <QByteArray>
#include <QString>

#include "pages/list_rows.h"

namespace borvane::mirror {

/// The shown magnitudes from which the rows of this form are bold, and bold and coloured.
inline constexpr double bold_world_magnitude = 4.5;
inline constexpr double coloured_world_magnitude = 6;

/// The world's list of the national host, in the form that the monitor's world list scanner reads: a table whose cells
/// are marked by "nowrap".
QByteArray WorldPage(const ListFrame &frame, const ListedEvents &events);

}  // namespace borvane::mirror
