#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace borvane::mirror {

/// One row as the monitor takes it from a quakes list page.
struct ListRow {
  std::string magnitude;
  std::string date;
  std::string time;
  std::string latitude;
  std::string longitude;
  std::string depth;
  std::string place;
  std::string link;

  bool operator==(const ListRow &) const = default;
};

/// What a scan of a page gave.
struct ListReading {
  std::vector<ListRow> rows;
  std::string fault;  ///< why the scan failed in its last row; empty when it came to a normal end
};

/// Reads a page by the markers and offsets of the monitor's own quakes list scanner, written a second time and plainly:
/// with copies, positions that count from 1, and 0 for what is not found.
ListReading ReadQuakesList(std::string_view page);

}  // namespace borvane::mirror
