#pragma once

#include "controls/color.h"
#include "controls/control.h"

namespace borvane {

/// A push button. Raises Click.
class CommandButton : public Control {
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

  CommandButton(Container &container, std::string_view name, const Design &design, int index = no_index)
      : Control(container, name, design, index), Caption(*this, std::string(design.Caption)) {}

  Property<std::string> Caption;
};

/// A box that is clear (0), ticked (1) or in between (2). A change of its value raises Click, also one made by code.
class CheckBox : public Control {
 public:
  struct Design {
    std::string_view Caption = "";
    int Value = 0;
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    bool Enabled = true;
    bool Visible = true;
    std::string_view ToolTipText = "";
    Color BackColor = color_button_face;
    std::string_view SpokenName = "";  // what a screen reader calls it; empty for its caption
  };

  CheckBox(Container &container, std::string_view name, const Design &design, int index = no_index)
      : Control(container, name, design, index),
        Caption(*this, std::string(design.Caption)),
        Value(*this, design.Value),
        back_color_(design.BackColor),
        spoken_name_(design.SpokenName) {}

  /// What the box is filled with.
  Color back_color() const { return back_color_; }

  std::string_view spoken_name() const { return spoken_name_; }

  Property<std::string> Caption;
  Property<Integer> Value;

 protected:
  void Changed(const PropertyBase &property) override;

 private:
  Color back_color_;
  std::string_view spoken_name_;
};

/// One of the choices of its container. Switching it on raises Click and switches the others of the container off.
class OptionButton : public Control {
 public:
  struct Design {
    std::string_view Caption = "";
    bool Value = false;
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    bool Enabled = true;
    bool Visible = true;
    std::string_view ToolTipText = "";
  };

  OptionButton(Container &container, std::string_view name, const Design &design, int index = no_index)
      : Control(container, name, design, index),
        Caption(*this, std::string(design.Caption)),
        Value(*this, design.Value) {}

  Property<std::string> Caption;
  Property<bool> Value;

 protected:
  void Changed(const PropertyBase &property) override;
};

}  // namespace borvane
