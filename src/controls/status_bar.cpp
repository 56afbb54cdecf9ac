#include "controls/status_bar.h"

#include "basic/failure.h"

namespace borvane {

StatusBar::StatusBar(Container &container, std::string_view name, const Design &design, int index)
    : Control(container, name, design, index) {
  for (const float width : design.PanelWidths)
    panels_.emplace_back(width);
}

StatusPanel &StatusBar::Panels(int number) {
  if (number < 1 || number > PanelCount())
    Fail(Failure::Subscript);
  return panels_[static_cast<std::size_t>(number - 1)];
}

}  // namespace borvane
