#pragma once

#include <deque>
#include <vector>

#include "controls/control.h"

namespace borvane {

/// One field of a status bar, with its width in twips.
class StatusPanel : public PropertyOwner {
 public:
  explicit StatusPanel(float width) : Text(*this, std::string()), Width(width) {}

  Property<std::string> Text;
  const float Width;
};

/// The line at the bottom of a window, with its panels counted from 1.
class StatusBar : public Control {
 public:
  struct Design {
    std::vector<float> PanelWidths;
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    bool Enabled = true;
    bool Visible = true;
    std::string_view ToolTipText = "";
  };

  StatusBar(Container &container, std::string_view name, const Design &design, int index = no_index);

  /// Raises a subscript failure when there is no such panel.
  StatusPanel &Panels(int number);
  int PanelCount() const { return static_cast<int>(panels_.size()); }

 private:
  std::deque<StatusPanel> panels_;
};

}  // namespace borvane
