#pragma once

#include <array>
#include <string>
#include <vector>

namespace borvane::plain {

/// What a scan of a page gives: the rows, slots 1 to 8 each; the number of the failure that ended it, 0 for none; and
/// the text that it has not cut away.
struct ScanResult {
  std::vector<std::array<std::string, 8>> rows;
  int failure = 0;
  std::string rest;

  bool operator==(const ScanResult &) const = default;
};

/// The scanner of the regional lists once more, slow and plain: every cut is a copy of the rest, every position a
/// 16-bit number. It judges the quick one.
ScanResult ScanQuakesList(const std::string &page);

}  // namespace borvane::plain
