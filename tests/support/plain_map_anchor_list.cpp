#include "basic/failure.h"
#include "support/plain_scanners.h"

namespace borvane::plain {

namespace {

/// Reads one row off the working text, whose marker is at `a` and whose magnitude ends at `q`.
Slots ReadRow(std::string &s, int a, int q) {
  Slots slot;
  slot[1] = Trim(Piece(s, Fits(a + 29), Fits(q - a - 29)));

  const int g = Position(s, ">", q);
  slot[8] = Piece(s, Fits(q + 9), Fits(g - q - 10));

  s = RestFrom(s, Fits(g + 1));

  for (std::size_t i = 1; i <= 4; ++i) {
    const int k = Position(s, " ", 1);
    slot[i + 1] = Trim(Piece(s, 1, Fits(k - 1)));
    s = RestFrom(s, Fits(k + 1));
  }

  const int h = Position(s, "<", 1);
  slot[6] = Trim(Piece(s, 1, Fits(h - 1)));

  const int h2 = Position(s, "<", h + 1);
  slot[7] = Trim(Piece(s, Fits(h + 4), Fits(h2 - h - 4)));
  return slot;
}

}  // namespace

ScanResult ScanMapAnchorList(const std::string &page) {
  ScanResult result;
  std::string s = page;
  try {
    do {
      const int a = Position(s, "MAP<", 1);
      const int q = Position(s, "<", a + 28);
      if (a == 0)
        break;
      AddRow(result, ReadRow(s, a, q));
    } while (!s.empty());
  } catch (const RuntimeError &error) {
    result.failure = error.number();
  }
  result.rest = s;
  return result;
}

}  // namespace borvane::plain
