#include "basic/failure.h"
#include "support/plain_scanners.h"

namespace borvane::plain {

namespace {

/// Reads one row off the working text, whose first cell's marker is at `a`.
Slots ReadRow(std::string &s, int a) {
  Slots slot;

  int b = Position(s, "<", a);
  slot[1] = Trim(Piece(s, Fits(a + 7), Fits(b - a - 7)));
  if (slot[1].empty()) {
    const int a2 = Position(s, "strong>", a);
    b = Position(s, "<", a2);
    slot[1] = Trim(Piece(s, Fits(a2 + 7), Fits(b - a2 - 7)));
    if (slot[1].empty()) {
      const int a3 = Fits(a2 + 29);
      b = Position(s, "<", a3);
      slot[1] = Trim(Piece(s, a3, Fits(b - a3)));
    }
  }

  s = RestFrom(s, Fits(b + 1));

  a = Position(s, "href=", 1);
  b = Position(s, ">", a);
  slot[8] = Piece(s, Fits(a + 7), Fits(b - a - 8));

  s = RestFrom(s, Fits(b + 1));

  a = Position(s, " ", 1);
  b = Position(s, "<", a);
  slot[2] = Piece(s, 1, Fits(a - 1));
  slot[3] = Piece(s, Fits(a + 1), Fits(b - a - 1));

  for (std::size_t i = 1; i <= 3; ++i) {
    const int c = Fits(Position(s, "nowrap>", 1) + 8);
    a = Position(s, ">", c);
    b = Position(s, "<", a);
    slot[i + 3] = Trim(Piece(s, Fits(a + 1), Fits(b - a - 1)));
    s = RestFrom(s, Fits(b + 1));
  }

  const int c = Fits(Position(s, "<td>", 1) + 4);
  int r = Position(s, "<", c);
  slot[7] = Piece(s, c, Fits(r - c));
  if (slot[7].empty()) {
    const int a2 = Position(s, "strong>", c);
    r = Position(s, "<", a2);
    slot[7] = Trim(Piece(s, Fits(a2 + 7), Fits(r - a2 - 7)));
    if (slot[7].empty()) {
      const int a3 = Fits(a2 + 29);
      r = Position(s, "<", a3);
      slot[7] = Trim(Piece(s, a3, Fits(r - a3)));
    }
  }
  return slot;
}

ScanResult Scan(const std::string &page, bool for_headline) {
  ScanResult result;
  std::string s = page;
  try {
    do {
      const int m = Position(s, "MAP", 1);
      const int a = Position(s, "nowrap>", m);
      if (a == 0)
        break;
      const Slots slot = ReadRow(s, a);
      if (for_headline) {
        result.elsewhere = {"Mag: " + slot[1] + "  Where: " + slot[7] + "  Time: " + slot[3], slot[8]};
        break;
      }
      AddRow(result, slot);
    } while (!s.empty());
  } catch (const RuntimeError &error) {
    result.failure = error.number();
  }
  result.rest = s;
  return result;
}

}  // namespace

ScanResult ScanWorldList(const std::string &page) { return Scan(page, false); }

ScanResult ScanWorldHeadline(const std::string &page) { return Scan(page, true); }

}  // namespace borvane::plain
