#pragma once

#include <deque>
#include <vector>

#include "controls/control.h"

namespace borvane {

/// One button of a toolbar. Its value is 1 while it is down; writing it raises nothing.
class ToolbarButton : public PropertyOwner {
 public:
  struct Design {
    std::string_view Picture;
    std::string_view ToolTipText;
    bool TwoState = false;
    bool Enabled = true;
  };

  explicit ToolbarButton(const Design &design)
      : Picture(design.Picture),
        ToolTipText(design.ToolTipText),
        TwoState(design.TwoState),
        Value(*this, 0),
        Enabled(*this, design.Enabled) {}

  const std::string_view Picture;
  const std::string_view ToolTipText;
  const bool TwoState;  // stays down when pressed, until it is pressed again
  Property<Integer> Value;
  Property<bool> Enabled;
};

/// A column of picture buttons, counted from 1.
class Toolbar : public Control {
 public:
  struct Design {
    std::vector<ToolbarButton::Design> Buttons;
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    bool Enabled = true;
    bool Visible = true;
    std::string_view ToolTipText = "";
  };

  Toolbar(Container &container, std::string_view name, const Design &design, int index = no_index);

  /// Raises a subscript failure when there is no such button.
  ToolbarButton &Buttons(int number);
  int ButtonCount() const { return static_cast<int>(buttons_.size()); }

  /// The user presses a button: a two-state button changes its value, then ButtonClick is raised. A disabled one does
  /// nothing.
  void Press(int number);

  Event<int> ButtonClick;

 private:
  std::deque<ToolbarButton> buttons_;
};

}  // namespace borvane
