#pragma once

#include <optional>

#include "controls/color.h"
#include "controls/control.h"
#include "controls/font.h"

namespace borvane {

enum class Alignment { Left, Right, Center };

/// A text, by default on its container's background.
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
    float FontSize = 0;
    bool Bold = false;
    bool Underline = false;
    Color ForeColor = color_button_text;
    std::optional<Color> BackColor = {};  // none: it is transparent
    borvane::Alignment Alignment = borvane::Alignment::Left;
    bool WordWrap = false;
    bool AutoSize = false;
  };

  Label(Container &container, std::string_view name, const Design &design, int index = no_index)
      : Control(container, name, design, index),
        Caption(*this, std::string(design.Caption)),
        ForeColor(*this, design.ForeColor),
        Bold(*this, design.Bold),
        Underline(*this, design.Underline),
        FontName(*this, std::string(design.FontName)),
        FontSize(*this, design.FontSize),
        back_color_(design.BackColor),
        alignment_(design.Alignment),
        word_wrap_(design.WordWrap),
        auto_size_(design.AutoSize) {
    FitText();
  }

  /// What the text is drawn with, but for underlining. Valid until FontName changes.
  Font font() const { return {.name = FontName(), .size = FontSize(), .bold = Bold()}; }

  /// What the label is filled with; nothing for a transparent one, which shows its container.
  std::optional<Color> back_color() const { return back_color_; }

  Alignment alignment() const { return alignment_; }

  /// Whether a text that is wider than the label continues on the next line.
  bool word_wrap() const { return word_wrap_; }

  /// Whether the label is always as large as its text needs in one line. It grows to the right.
  bool auto_size() const { return auto_size_; }

  Property<std::string> Caption;
  Property<Color> ForeColor;
  Property<bool> Bold;
  Property<bool> Underline;
  Property<std::string> FontName;  // empty for the window's own
  Property<float> FontSize;        // in points; 0 for the window's own

 protected:
  void Changed(const PropertyBase &property) override;

 private:
  /// Gives a label that sizes itself the size of its text, which the host measures whether the window is shown or not.
  void FitText();

  std::optional<Color> back_color_;
  Alignment alignment_;
  bool word_wrap_;
  bool auto_size_;
};

}  // namespace borvane
