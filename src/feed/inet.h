#pragma once

#include <string>
#include <string_view>

#include "controls/control.h"
#include "platform/http_transfer.h"

namespace borvane {

/// The HTTP client of a window. One request at a time: a later one takes the client over only after Cancel.
class Inet : public Control {
 public:
  struct Design {
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    bool Enabled = true;
    bool Visible = false;
    std::string_view ToolTipText = "";
  };

  Inet(Container &container, std::string_view name, const Design &design, int index = no_index)
      : Control(container, name, design, index) {}

  /// Asks for the body as text, the only form that there is.
  static constexpr int as_text = 0;

  /// Fetches `address` and returns the body. Events run meanwhile, and one of them may cancel this request. Raises a
  /// failure when the host cannot be reached, the time passes, the request is cancelled or the client is busy.
  std::string OpenURL(std::string_view address, int form = as_text);

  /// Whether the newest request is under way.
  bool StillExecuting() const;

  /// Ends the newest request if it is under way.
  void Cancel();

  Event<> StateChanged;  // a request has started or ended

 private:
  TransferNumber newest_ = 0;
};

}  // namespace borvane
