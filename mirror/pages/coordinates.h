#pragma once

#include <QByteArray>
#include <optional>
#include <utility>

#include "catalogue/event.h"

namespace borvane::mirror {

/// The two whole numbers, each perhaps negative, of a page's name like "116-33.html" or "-116-33.html"; nothing for any
/// other name.
std::optional<std::pair<int, int>> PageNumbers(const QByteArray &name);

/// Whether an event belongs to the page named by the two numbers: its epicentre lies within one degree of longitude -A
/// and latitude B, where A and B are the numbers in one of the two orders. The monitor's boxes ask for the latitude
/// first, the pages of the named areas begin with the longitude; so both orders give the same page. None belongs to
/// 0-0.
bool BelongsToPage(const Event &event, int first, int second);

/// The path of a page of this kind that holds the event, named by the whole degrees of its longitude and latitude.
QByteArray MapPath(const Event &event);

}  // namespace borvane::mirror
