#pragma once

#include <string_view>

#include "controls/form.h"

namespace borvane {

/// Hands addresses and files to the desktop's own programs.
class Shell {
 public:
  /// Opens `address` in the default browser, on behalf of `owner` if there is one. Only http and https addresses are
  /// opened; anything else, and a failure, is silence.
  virtual void Open(std::string_view address, FormBase *owner) = 0;

  /// Opens a file of the program's own, quakes.log or help.html, with the program that the desktop has for its kind.
  /// Anything else, and a failure, is silence. `path` is the system's own bytes.
  virtual void OpenFile(std::string_view path, FormBase *owner) = 0;

 protected:
  ~Shell() = default;
};

}  // namespace borvane
