#include "basic/failure.h"
#include "support/plain_scanners.h"

namespace borvane::plain {

namespace {

constexpr int upper_bound = 4;

/// The first row of the table is passed on, which always fails.
void PassOn(ScanResult &result, std::array<std::string, upper_bound + 1> &slot) {
  const int d = Position(slot[2], " ", 1);
  if (d == 0)
    slot[2] += " ";
  Piece(slot[2], 1, Fits(d - 1));
  result.elsewhere.push_back(slot[1]);
  Fail(Failure::Subscript);  // slot 7
}

void ReadTable(ScanResult &result, std::string &s) {
  std::array<std::string, upper_bound + 1> slot;
  do {
    int h = 0;
    for (std::size_t i = 1; i <= 3; ++i) {
      const int a = Position(s, "href", 1);
      h = Position(s, "html", 1);
      slot[4] = Piece(s, Fits(a + 6), Fits(h - a - 2));
      s = RestFrom(s, Fits(h + 6));
      const int c = Position(s, "<", 1);
      slot[i] = Piece(s, 1, Fits(c - 1));
    }

    result.rows.push_back({slot[2], slot[1], slot[3], slot[4]});

    if (Find(s, "</table>", 1) < h)
      break;

    if (result.rows.size() == 1)
      PassOn(result, slot);
  } while (!s.empty());
  result.elsewhere.emplace_back("widths");
}

}  // namespace

ScanResult ScanRegionTable(const std::string &page) {
  ScanResult result;
  std::string s = page;
  try {
    const int b = Position(s, "<td><center>Region</center></td>", 1);
    if (b != 0) {
      result.elsewhere.emplace_back("columns");
      s = RestFrom(s, Fits(b + 1));
      ReadTable(result, s);
    }
  } catch (const RuntimeError &error) {
    result.failure = error.number();
  }
  result.rest = s;
  return result;
}

}  // namespace borvane::plain
