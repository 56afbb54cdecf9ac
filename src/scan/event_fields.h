#pragma once

#include <array>
#include <span>
#include <string_view>

#include "basic/failure.h"

namespace borvane {

/// The text fields of one event, from slot 0 to an upper bound that differs by scanner: 1 magnitude, 2 date, 3 time,
/// 4 latitude, 5 longitude, 6 depth in km, 7 place, 8 link. A scanner has one for all its rows; nothing empties it
/// between them. The texts are pieces of the page, which has to stay as it is for as long as they are used.
class EventFields {
 public:
  static constexpr int largest_bound = 20;

  /// Slots 0 to `upper_bound`, at most largest_bound; all empty.
  explicit EventFields(int upper_bound) : upper_bound_(upper_bound) {}

  int UpperBound() const { return upper_bound_; }

  /// Raises a subscript failure outside the bounds.
  std::string_view &operator()(int slot) {
    if (slot < 0 || slot > upper_bound_)
      Fail(Failure::Subscript);
    return slots_[static_cast<std::size_t>(slot)];
  }

  /// The slots from `first` to `last`. Raises a subscript failure outside the bounds.
  std::span<const std::string_view> Slots(int first, int last) const {
    if (first < 0 || first > last || last > upper_bound_)
      Fail(Failure::Subscript);
    return {slots_.begin() + first, slots_.begin() + last + 1};
  }

 private:
  int upper_bound_;
  std::array<std::string_view, largest_bound + 1> slots_;
};

}  // namespace borvane
