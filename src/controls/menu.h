#pragma once

#include "controls/control.h"

namespace borvane {

/// A popup menu; holds its entries.
class Menu : public Control, public Container {
 public:
  struct Design {
    std::string_view Caption = "";
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    bool Enabled = true;
    bool Visible = false;
    std::string_view ToolTipText = "";
  };

  Menu(Container &container, std::string_view name, const Design &design)
      : Control(container, name, design, no_index), Caption(*this, std::string(design.Caption)) {}

  Property<std::string> Caption;
};

/// An entry of a menu. Raises Click.
class MenuItem : public Control {
 public:
  struct Design {
    std::string_view Caption = "";
    bool Checked = false;
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    bool Enabled = true;
    bool Visible = true;
    std::string_view ToolTipText = "";
  };

  MenuItem(Menu &menu, std::string_view name, const Design &design)
      : Control(menu, name, design, no_index),
        Caption(*this, std::string(design.Caption)),
        Checked(*this, design.Checked) {}

  Property<std::string> Caption;
  Property<bool> Checked;
};

}  // namespace borvane
