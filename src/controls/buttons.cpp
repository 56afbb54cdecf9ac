#include "controls/buttons.h"

namespace borvane {

void CheckBox::Changed(const PropertyBase &property) {
  if (&property == &Value)
    Click.Raise();
}

void OptionButton::Changed(const PropertyBase &property) {
  if (&property != &Value || !Value())
    return;
  for (Control *control : container().children()) {
    auto *other = dynamic_cast<OptionButton *>(control);
    if (other != nullptr && other != this)
      other->Value = false;
  }
  Click.Raise();
}

}  // namespace borvane
