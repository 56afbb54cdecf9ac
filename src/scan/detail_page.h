#pragma once

#include <string>

#include "basic/integer.h"

namespace borvane {

// The page of a single event, from which a row of the table of a region gets what it lacks: the place and the depth.

/// Fetches an event's page; empty when the client is busy or the fetch fails.
std::string FetchDetailPage(const std::string &address);

/// The mode of ScanLatLon in which it reads.
inline constexpr int read_coordinates = 1;

/// Reads both coordinates and writes them into the list's selected row, too. Does nothing in any other mode than
/// read_coordinates. Raises a failure for a page that ends before a number does, such as an empty one, and when no row
/// is selected.
void ScanLatLon(const std::string &page, const Integer &mode, float &latitude, float &longitude);

/// Reads the depth as it is on the page. Raises a failure for a page that ends before it does.
std::string ScanDepth(const std::string &page);

}  // namespace borvane
