#include "controls/text_box.h"

namespace borvane {

void TextBox::Changed(const PropertyBase &property) {
  if (&property == &Text)
    Change.Raise();
}

}  // namespace borvane
