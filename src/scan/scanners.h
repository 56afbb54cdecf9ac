#pragma once

#include <string>

#include "basic/integer.h"

namespace borvane {

// The scanners take the events out of a page by plain search for fixed markers, with fixed offsets, and put them into
// the lists of frmRecords. Each takes the refresh mode, which it ignores, and the page, of which it leaves what it has
// not read. A page that does not fit the markers raises a failure; the rows so far stay in the list.

/// Reads a regional list of recent earthquakes.
void ScanQuakesList(Integer &mode, std::string &page);

/// Reads the list that belongs to a map.
void ScanMapList(Integer &mode, std::string &page);

/// Reads the table of a region.
void ScanRegionTable(Integer &mode, std::string &page);

/// Reads the list whose rows link to a map.
void ScanMapAnchorList(Integer &mode, std::string &page);

/// Reads the list of the world, for the list of events or for the headline.
void ScanWorldList(Integer &mode, std::string &page);

}  // namespace borvane
