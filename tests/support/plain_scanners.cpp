#include "support/plain_scanners.h"

#include "basic/failure.h"
#include "basic/number.h"

namespace borvane::plain {

int Fits(int value) {
  if (value > 32767 || value < -32768)
    Fail(Failure::Overflow);
  return value;
}

int Position(const std::string &text, const std::string &what, int from) { return Fits(Find(text, what, Fits(from))); }

void AddRow(ScanResult &result, const Slots &slot) {
  Row &row = result.rows.emplace_back();
  for (std::size_t i = 1; i <= 8; ++i)
    row[i - 1] = slot[i];
  NumericPrefix(slot[1]);
}

}  // namespace borvane::plain
