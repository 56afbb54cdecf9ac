#pragma once

#include "controls/control.h"

namespace borvane {

/// A box with a caption around other controls, whose geometry counts from its corner.
class Frame : public Control, public Container {
 public:
  struct Design {
    std::string_view Caption = "";
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    bool Enabled = true;
    bool Visible = true;
    std::string_view ToolTipText = "";
  };

  Frame(Container &container, std::string_view name, const Design &design, int index = no_index)
      : Control(container, name, design, index), Caption(*this, std::string(design.Caption)) {}

  Property<std::string> Caption;
};

}  // namespace borvane
