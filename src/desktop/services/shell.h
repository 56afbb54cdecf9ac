#pragma once

#include "platform/shell.h"

namespace borvane {

/// The desktop's default programs.
class DesktopShell final : public Shell {
 public:
  void Open(std::string_view address, FormBase *owner) override;
  void OpenFile(std::string_view path, FormBase *owner) override;
};

}  // namespace borvane
