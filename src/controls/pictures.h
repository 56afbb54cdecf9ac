#pragma once

#include "controls/color.h"
#include "controls/control.h"

namespace borvane {

/// A box that shows a colour. It may hold other controls, whose geometry counts from its corner. Raises Click.
class PictureBox : public Control, public Container {
 public:
  struct Design {
    Color BackColor = color_button_face;
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    bool Enabled = true;
    bool Visible = true;
    std::string_view ToolTipText = "";
  };

  PictureBox(Container &container, std::string_view name, const Design &design, int index = no_index)
      : Control(container, name, design, index), BackColor(*this, design.BackColor) {}

  /// The inner width, in twips: the box has no border.
  float ScaleWidth() const { return Width(); }

  Property<Color> BackColor;
};

/// A picture without a border. `Picture` names one of the program's own.
class Image : public Control {
 public:
  struct Design {
    std::string_view Picture = "";
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    bool Enabled = true;
    bool Visible = true;
    std::string_view ToolTipText = "";
  };

  Image(Container &container, std::string_view name, const Design &design, int index = no_index)
      : Control(container, name, design, index), Picture(*this, std::string(design.Picture)) {}

  Property<std::string> Picture;
};

}  // namespace borvane
