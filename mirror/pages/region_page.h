#pragma once

#include <QByteArray>
#include <QString>

#include "pages/list_rows.h"

namespace borvane::mirror {

/// The list page of Alaska's network, in the form that the monitor's region table scanner reads: a table with the
/// newest event, whose links are whole addresses on `host`, a plain one (see IsPlainHost). The scanner reads that one
/// row and fails at a second, so earlier events are in a table of their own, for people.
QByteArray RegionPage(const ListFrame &frame, const ListedEvents &events, const QByteArray &host);

}  // namespace borvane::mirror
