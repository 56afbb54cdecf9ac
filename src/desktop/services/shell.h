#pragma once

#include "platform/shell.h"

namespace borvane {

/// The desktop's default browser.
class DesktopShell final : public Shell {
 public:
  void Open(std::string_view address, FormBase *owner) override;
};

}  // namespace borvane
