#pragma once

#include <string_view>

#include "controls/control.h"

namespace borvane {

/// A part of a text: `length` characters after the first `start`.
struct TextSelection {
  int start = 0;
  int length = 0;

  bool operator==(const TextSelection &) const = default;
};

/// A box to type in. A change of its text raises Change, also one made by code; entering it raises GotFocus, leaving it
/// LostFocus. In a box with many lines, a carriage return and a line feed end each of them but the last.
class TextBox : public Control {
 public:
  struct Design {
    std::string_view Text = "";
    bool MultiLine = false;
    float Left = 0;
    float Top = 0;
    float Width = 0;
    float Height = 0;
    bool Enabled = true;
    bool Visible = true;
    std::string_view ToolTipText = "";
  };

  TextBox(Container &container, std::string_view name, const Design &design, int index = no_index)
      : Control(container, name, design, index),
        Text(*this, std::string(design.Text)),
        Selection(*this, TextSelection{}),
        multi_line_(design.MultiLine) {}

  bool multi_line() const { return multi_line_; }

  Property<std::string> Text;

  /// What is selected. The desktop writes it whenever the user selects, so that each write of another selection by the
  /// program is a change. It raises nothing, and a change of the text leaves it as it is.
  Property<TextSelection> Selection;

  Event<> Change;

 protected:
  void Changed(const PropertyBase &property) override;

 private:
  bool multi_line_;
};

}  // namespace borvane
