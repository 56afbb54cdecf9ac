#pragma once

#include <cstdint>

#include "controls/control.h"

namespace borvane {

/// A colour as 0x00BBGGRR, or a colour of the system with the top bit set.
using Color = std::uint32_t;

inline constexpr Color color_button_text = 0x80000012;
inline constexpr Color color_button_face = 0x8000000F;

/// A line of text.
class Label : public Control {
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
    std::string_view FontName = "";
  };

  Label(Container &container, std::string_view name, const Design &design, int index = no_index)
      : Control(container, name, design, index),
        Caption(*this, std::string(design.Caption)),
        ForeColor(*this, color_button_text),
        Bold(*this, false),
        Underline(*this, false),
        FontName(*this, std::string(design.FontName)) {}

  Property<std::string> Caption;
  Property<Color> ForeColor;
  Property<bool> Bold;
  Property<bool> Underline;
  Property<std::string> FontName;  // empty for the window's own
};

}  // namespace borvane
