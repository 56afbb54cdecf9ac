#pragma once

#include <string>
#include <vector>

#include "scan/scanners.h"
#include "support/plain_scanners.h"

namespace borvane {

/// A scanner and the plain one that it has to agree with.
struct Twins {
  Scanner scan;
  plain::ScanResult (*plain_scan)(const std::string &page);

  /// What the scan has written elsewhere than into rows, in the form of the plain one.
  std::vector<std::string> (*elsewhere)();

  /// Whether the page is read for the headline.
  bool for_headline = false;
};

extern const Twins quakes_list_twins;
extern const Twins map_list_twins;
extern const Twins map_anchor_list_twins;
extern const Twins world_list_twins;
extern const Twins world_headline_twins;
extern const Twins region_table_twins;

/// What the program's scanner makes of a page. Nothing remains of an earlier page.
plain::ScanResult ResultOf(const Twins &twins, std::string page);

}  // namespace borvane
