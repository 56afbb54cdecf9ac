#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "basic/integer.h"
#include "controls/event.h"
#include "controls/property.h"

namespace borvane {

class Control;

// The buttons of the mouse.
inline constexpr int left_button = 1;
inline constexpr int right_button = 2;

/// What holds controls: a window, a frame, a picture box, a menu. Lists them in the order of their declaration.
class Container {
 public:
  Container() = default;
  Container(const Container &) = delete;
  Container &operator=(const Container &) = delete;

  const std::vector<Control *> &children() const { return children_; }

 protected:
  ~Container() = default;

 private:
  friend class Control;
  std::vector<Control *> children_;
};

/// Where the pointer is and which buttons and modifier keys are down. Positions are twips in the window or control;
/// those of a label are in the label's container, as if the container had the event.
struct MouseState {
  Integer button;  // left_button, right_button or 4, the middle one
  Integer shift;   // 1 Shift, 2 Ctrl, 4 Alt
  float x = 0;
  float y = 0;
};

/// What all controls have. Geometry is in twips within the container.
class Control : public PropertyOwner {
 public:
  static constexpr int no_index = -1;

  /// The name as in its window, with the position for a member of a control array: "Label1(2)".
  std::string FullName() const;
  std::string_view name() const { return name_; }

  /// The position in a control array, or no_index.
  int index() const { return index_; }
  Container &container() const { return container_; }

 private:
  std::string_view name_;
  int index_;
  Container &container_;

 public:
  Property<float> Left;
  Property<float> Top;
  Extent Width;
  Extent Height;
  Property<bool> Visible;
  Property<bool> Enabled;
  Property<std::string> ToolTipText;
  Property<std::string> Tag;

  Event<> Click;
  Event<const MouseState &> MouseMove;
  Event<const MouseState &> MouseUp;
  Event<> GotFocus;
  Event<> LostFocus;

 protected:
  /// `design` is the struct of design values of the control's kind; `name` must be a literal.
  template <class Design>
  Control(Container &container, std::string_view name, const Design &design, int index)
      : name_(name),
        index_(index),
        container_(container),
        Left(*this, design.Left),
        Top(*this, design.Top),
        Width(*this, design.Width),
        Height(*this, design.Height),
        Visible(*this, design.Visible),
        Enabled(*this, design.Enabled),
        ToolTipText(*this, std::string(design.ToolTipText)),
        Tag(*this, std::string()) {
    container.children_.push_back(this);
  }
};

}  // namespace borvane
