#pragma once

#include <QByteArray>
#include <QString>

#include "pages/list_rows.h"

namespace borvane::mirror {

/// The list page of the regional networks, a row an event, in the form that the monitor's quakes list scanner reads.
/// `introduction` is HTML above the list.
QByteArray QuakesPage(const ListFrame &frame, const ListedEvents &events, const QByteArray &introduction = {});

}  // namespace borvane::mirror
