#pragma once

#include "controls/control.h"

namespace borvane {

/// A box to type in. A change of its text raises Change, also one made by code; leaving it raises LostFocus.
class TextBox : public Control {
 public:
  struct Design {
    std::string_view Text = "";
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    bool Enabled = true;
    bool Visible = true;
    std::string_view ToolTipText = "";
  };

  TextBox(Container &container, std::string_view name, const Design &design, int index = no_index)
      : Control(container, name, design, index), Text(*this, std::string(design.Text)) {}

  Property<std::string> Text;
  Event<> Change;

 protected:
  void Changed(const PropertyBase &property) override;
};

}  // namespace borvane
