#pragma once

#include "platform/region.h"

namespace borvane {

/// A region with the decimal separator that the test sets.
class FakeRegion final : public Region {
 public:
  void SetDecimalSeparator(char separator) { separator_ = separator; }

  char DecimalSeparator() override { return separator_; }

 private:
  char separator_ = '.';
};

}  // namespace borvane
