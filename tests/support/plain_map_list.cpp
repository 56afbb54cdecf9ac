#include "basic/failure.h"
#include "support/plain_scanners.h"

namespace borvane::plain {

namespace {

/// Reads one row off the working text, whose small marker is at `b`.
Slots ReadRow(std::string &s, int b) {
  Slots slot;

  int c = Position(s, ">MAP</A>", 1);
  if (c < b)
    b = Fits(Position(s, ">", c + 8) - 6);

  s = RestFrom(s, Fits(b + 8));

  c = Position(s, "<", 1);
  slot[1] = Trim(Piece(s, 1, Fits(c - 1)));

  s = RestFrom(s, Fits(c + 1));

  const int g = Position(s, ">", 1);
  slot[8] = Piece(s, 10, Fits(g - 11));

  s = RestFrom(s, static_cast<int>(slot[8].length()) + 12);

  for (std::size_t i = 1; i <= 4; ++i) {
    const int k = Position(s, " ", 1);
    slot[i + 1] = Piece(s, 1, Fits(k - 1));
    s = RestFrom(s, Fits(k + 1));
  }

  c = Position(s, "<", 1);
  slot[6] = Trim(Piece(s, 1, Fits(c - 1)));
  s = RestFrom(s, Fits(c + 5));

  c = Position(s, "<", 1);
  slot[7] = Trim(Piece(s, 1, Fits(c - 2)));
  s = RestFrom(s, Fits(c + 5));
  return slot;
}

}  // namespace

ScanResult ScanMapList(const std::string &page) {
  ScanResult result;
  std::string s = page;
  try {
    do {
      const int b = Position(s, ">map</A>", 1);
      if (b == 0)
        break;
      AddRow(result, ReadRow(s, b));
    } while (!s.empty());
  } catch (const RuntimeError &error) {
    result.failure = error.number();
  }
  result.rest = s;
  return result;
}

}  // namespace borvane::plain
