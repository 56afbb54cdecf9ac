#include "desktop/widgets/colors.h"

namespace borvane {

QColor ScreenColor(Color color, const QPalette &palette) {
  if (color == color_button_text)
    return palette.color(QPalette::WindowText);
  if (color == color_button_face)
    return palette.color(QPalette::Window);
  const auto part = [&](int shift) { return static_cast<int>((color >> shift) & 0xFFU); };
  return {part(0), part(8), part(16)};
}

}  // namespace borvane
