#include "basic/failure.h"
#include "support/plain_scanners.h"

namespace borvane::plain {

namespace {

const std::string marker = "/recenteqs/Quakes/";

/// Reads one row off the working text, after the marker at `marker_position`.
Slots ReadRow(std::string &s, int marker_position) {
  Slots slot;

  int a = Fits(marker_position - 15);
  const int q = Position(s, " ", a + 1);
  slot[1] = Trim(Piece(s, a, Fits(q - a)));

  s = RestFrom(s, Fits(q + 1));

  const int e = Position(s, "=", 1);
  int g = Position(s, ">", e + 1);

  slot[8] = Piece(s, Fits(e + 3), Fits(g - e - 4));

  for (std::size_t i = 1; i <= 4; ++i) {
    s = RestFrom(s, Fits(g + 1));
    g = Position(s, " ", 1);
    slot[i + 1] = Piece(s, 1, Fits(g - 1));
  }

  const int h = Position(s, "<", 1);
  slot[6] = Piece(s, Fits(g + 1), Fits(h - g - 1));

  s = RestFrom(s, Fits(h + 1));

  a = Position(s, ">", 1);
  int b = Position(s, "\n", 1);
  const int tag = Find(s, "<", 1);
  if (tag < b)
    b = Position(s, "<", 1);

  slot[7] = Trim(Piece(s, Fits(a + 1), Fits(b - 4)));
  return slot;
}

}  // namespace

ScanResult ScanQuakesList(const std::string &page) {
  ScanResult result;
  std::string s = page;
  try {
    do {
      const int p = Position(s, marker, 1);
      if (p == 0)
        break;
      AddRow(result, ReadRow(s, p));
    } while (!s.empty());
  } catch (const RuntimeError &error) {
    result.failure = error.number();
  }
  result.rest = s;
  return result;
}

}  // namespace borvane::plain
