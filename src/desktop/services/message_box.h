#pragma once

#include "platform/message_box.h"

namespace borvane {

/// Qt's message box, over the window that the user works in.
class QtMessageBox final : public MessageBox {
 public:
  MessageAnswer Show(std::string_view text, std::string_view title, MessageButtons buttons, MessageIcon icon) override;
};

}  // namespace borvane
