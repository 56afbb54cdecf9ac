#include "controls/combo_box.h"

namespace borvane {

std::string_view ComboBox::List(int position) const {
  if (position < 0 || position >= ListCount())
    return {};
  return entries_[static_cast<std::size_t>(position)];
}

void ComboBox::Select(int position) {
  if (position < 0 || position >= ListCount())
    Fail(Failure::Subscript);
  Text = List(position);
  list_index_ = position;
  Click.Raise();
}

void ComboBox::Changed(const PropertyBase &property) {
  if (&property == &Text)
    list_index_ = -1;
}

}  // namespace borvane
