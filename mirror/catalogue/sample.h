#pragma once

#include <QByteArray>
#include <vector>

#include "catalogue/event.h"

namespace borvane::mirror {

/// The events of the bundled sample catalogue, newest first.
std::vector<Event> SampleEvents();

/// Reads the sample's table: a line of column names, then a line an event: id, origin time in UTC, latitude, longitude,
/// depth, magnitude, place, network; fields separated by commas, one with a comma in double quotes. A line that is no
/// event is left out.
std::vector<Event> ReadEventTable(const QByteArray &table);

}  // namespace borvane::mirror
