#include "basic/failure.h"
#include "basic/number.h"
#include "support/plain_scanners.h"

namespace borvane::plain {

namespace {

std::string ValueOf(const std::string &page, const std::string &label, int distance) {
  const int p = Fits(Position(page, label, 1) + distance);
  const int q = Position(page, "<", p);
  return Piece(page, p, Fits(q - p));
}

}  // namespace

EventPage ReadEventPage(const std::string &page) {
  EventPage read;
  try {
    read.latitude = SinglePrefix(ValueOf(page, "Latitude:", 19));
    read.longitude = SinglePrefix(ValueOf(page, "Longitude:", 20));
  } catch (const RuntimeError &error) {
    read.coordinates_failure = error.number();
  }
  try {
    read.depth = ValueOf(page, "Depth:", 16);
  } catch (const RuntimeError &error) {
    read.depth_failure = error.number();
  }
  return read;
}

}  // namespace borvane::plain
