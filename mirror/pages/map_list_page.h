#pragma once

#include <QByteArray>
#include <QString>

#include "pages/list_rows.h"

namespace borvane::mirror {

/// The shown magnitude from which the rows of this form are bold.
inline constexpr double bold_map_magnitude = 3;

/// The list page of the networks of Utah and the northeast, in the form that the monitor's map list scanner reads. The
/// map link at the start of a row is in small or in capital letters.
QByteArray MapListPage(const ListFrame &frame, const ListedEvents &events);

}  // namespace borvane::mirror
