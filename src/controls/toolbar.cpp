#include "controls/toolbar.h"

#include "basic/failure.h"

namespace borvane {

Toolbar::Toolbar(Container &container, std::string_view name, const Design &design, int index)
    : Control(container, name, design, index) {
  for (const ToolbarButton::Design &button : design.Buttons)
    buttons_.emplace_back(button);
}

ToolbarButton &Toolbar::Buttons(int number) {
  if (number < 1 || number > ButtonCount())
    Fail(Failure::Subscript);
  return buttons_[static_cast<std::size_t>(number - 1)];
}

void Toolbar::Press(int number) {
  ToolbarButton &button = Buttons(number);
  if (!Enabled() || !button.Enabled())
    return;
  if (button.TwoState)
    button.Value = button.Value() == 0 ? 1 : 0;
  ButtonClick.Raise(number);
}

}  // namespace borvane
