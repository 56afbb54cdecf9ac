#pragma once

namespace borvane {

/// What the user's region decides.
class Region {
 public:
  /// The character between the whole and the fraction of a number, in the program's single-byte text.
  virtual char DecimalSeparator() = 0;

 protected:
  ~Region() = default;
};

}  // namespace borvane
