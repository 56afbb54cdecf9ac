#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "support/mirror/quakes_list_reader.h"

namespace borvane::mirror {

// The other forms of pages, read as ReadQuakesList does it: by the markers and offsets of the monitor's scanners, a
// second time and plainly.

/// Reads a page by the steps of the monitor's map list scanner.
ListReading ReadMapList(std::string_view page);

/// Reads a page by the steps of the monitor's map anchor scanner.
ListReading ReadMapAnchorList(std::string_view page);

/// Reads a page by the steps of the monitor's world list scanner.
ListReading ReadWorldList(std::string_view page);

/// What the world list scanner takes for the headline.
struct HeadlineReading {
  std::optional<ListRow> row;  ///< the page's first; none when the scan ended before it had one
  std::string fault;           ///< why the scan failed; empty when it came to a normal end
};

/// Reads a page by the steps of the monitor's world list scanner in its second role.
HeadlineReading ReadWorldHeadline(std::string_view page);

/// What a scan of a region table gave. The date has the row's date and time; latitude, longitude and depth are empty.
struct RegionReading {
  bool has_table = false;  ///< whether the list was prepared for rows
  ListReading list;
};

/// Reads a page by the steps of the monitor's region table scanner.
RegionReading ReadRegionTable(std::string_view page);

/// The texts that the monitor takes from an event's page.
struct EventReading {
  std::string latitude;
  std::string longitude;
  std::string depth;
  std::string fault = {};  ///< why the reading failed; empty when it came to a normal end

  bool operator==(const EventReading &) const = default;
};

/// Reads a page by the steps of the monitor's reader of event pages.
EventReading ReadEventPage(std::string_view page);

}  // namespace borvane::mirror
