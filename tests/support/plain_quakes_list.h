#pragma once

#include <array>
#include <string>
#include <vector>

namespace borvane::plain {

/// The result of a scan of a page: the rows, slots 1 to 8 each; the number of the failure that ended it, 0 for none;
/// and the text that it has not cut off.
struct ScanResult {
  std::vector<std::array<std::string, 8>> rows;
  int failure = 0;
  std::string rest;

  bool operator==(const ScanResult &) const = default;
};

/// The scanner of the regional lists again, slow and plain: every cut is a copy of the rest, every position a 16-bit
/// number. A reference for the quick one.
ScanResult ScanQuakesList(const std::string &page);

}  // namespace borvane::plain
