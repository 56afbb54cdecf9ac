#pragma once

#include <array>
#include <string>
#include <vector>

#include "support/plain_text.h"

/// The scanners again, slow and plain: every cut is a copy of the rest, every search starts at its own position, every
/// position is a 16-bit number. A reference for the quick ones.
namespace borvane::plain {

/// A row as the list shows it: its text and those of the next seven columns.
using Row = std::array<std::string, 8>;

/// The number of each text in a row of events.
namespace column {
inline constexpr std::size_t magnitude = 0, date = 1, time = 2, latitude = 3, longitude = 4, depth = 5, place = 6,
                             link = 7;
}

/// The number of each text in a row of a region's table.
namespace region_column {
inline constexpr std::size_t magnitude = 0, moment = 1, place = 2, link = 3;
}

/// The result of a scan of a page: the rows; what it writes elsewhere, a text each; the number of the failure that
/// ended it, 0 for none; and the text that it has not cut off.
struct ScanResult {
  std::vector<Row> rows;
  std::vector<std::string> elsewhere;
  int failure = 0;
  std::string rest;

  bool operator==(const ScanResult &) const = default;
};

ScanResult ScanQuakesList(const std::string &page);
ScanResult ScanMapList(const std::string &page);
ScanResult ScanMapAnchorList(const std::string &page);

/// What a scan for the list reads.
ScanResult ScanWorldList(const std::string &page);

/// What a scan for the headline reads: no rows, and elsewhere the headline and its link.
ScanResult ScanWorldHeadline(const std::string &page);

/// The rows have their texts in the order of region_column. Elsewhere: "columns" when the list is given new ones, the
/// magnitude that the upper list shows, and "widths" when the columns get theirs.
ScanResult ScanRegionTable(const std::string &page);

/// What is read of an event's page: both coordinates and the number of the failure that ended the reading, then the
/// depth and the number of its own.
struct EventPage {
  double latitude = 0;
  double longitude = 0;
  int coordinates_failure = 0;
  std::string depth;
  int depth_failure = 0;

  bool operator==(const EventPage &) const = default;
};

EventPage ReadEventPage(const std::string &page);

// What the scanners share.

/// A position, or a sum or difference made from one: fails unless it fits 16 bits.
int Fits(int value);

/// The position of `what` at or after `from`, as 16 bits.
int Position(const std::string &text, const std::string &what, int from);

/// The slots 1 to 8 of an event; slot 0 is not used.
using Slots = std::array<std::string, 9>;

/// Appends a row of these slots and fails when its magnitude is beyond all numbers, which the memory of the strongest
/// event does not take.
void AddRow(ScanResult &result, const Slots &slot);

}  // namespace borvane::plain
