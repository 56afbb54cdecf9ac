#pragma once

#include <QByteArray>
#include <QString>

#include "pages/list_rows.h"

namespace borvane::mirror {

/// The list page of Puerto Rico's network, in the form that the monitor's map anchor scanner reads: a table whose rows
/// begin with a cell "MAP". Its links have no leading slash, since the scanner joins them to one; a base address leads
/// a browser to the same pages.
QByteArray MapAnchorPage(const ListFrame &frame, const ListedEvents &events);

}  // namespace borvane::mirror
