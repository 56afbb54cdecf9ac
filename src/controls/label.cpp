#include "controls/label.h"

#include "controls/form_set.h"

namespace borvane {

void Label::Changed(const PropertyBase &property) {
  if (&property == &Caption || &property == &Bold || &property == &FontName || &property == &FontSize)
    FitText();
}

void Label::FitText() {
  if (!auto_size_)
    return;
  const Size size = current->host().SizeOfText(Caption(), font());
  Width = size.width;
  Height = size.height;
}

}  // namespace borvane
