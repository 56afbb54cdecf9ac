#pragma once

#include <string_view>

#include "controls/form.h"

namespace borvane {

/// Hands addresses to the desktop's own programs.
class Shell {
 public:
  /// Opens `address` in the default browser, on behalf of `owner` if there is one. Only http and https addresses are
  /// opened; anything else, and a failure, is silence.
  virtual void Open(std::string_view address, FormBase *owner) = 0;

 protected:
  ~Shell() = default;
};

}  // namespace borvane
