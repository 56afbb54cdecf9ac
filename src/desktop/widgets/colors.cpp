#include "desktop/widgets/colors.h"

namespace borvane {

namespace {

/// The part of the palette that stands for a colour of the system.
QColor SystemColor(Color color, const QPalette &palette) {
  constexpr Color desktop = 0x80000001;
  constexpr Color active_caption = 0x80000002;
  constexpr Color highlighted_text = 0x8000000E;
  constexpr Color inactive_caption_text = 0x80000013;
  switch (color) {
    case desktop:
    case active_caption:
      return palette.color(QPalette::Highlight);
    case highlighted_text:
      return palette.color(QPalette::HighlightedText);
    case color_button_face:
      return palette.color(QPalette::Window);
    case inactive_caption_text:
      return palette.color(QPalette::Inactive, QPalette::WindowText);
    default:
      return palette.color(QPalette::WindowText);
  }
}

}  // namespace

QColor ScreenColor(Color color, const QPalette &palette) {
  constexpr Color system_bit = 0x80000000;
  if ((color & system_bit) != 0)
    return SystemColor(color, palette);
  const auto part = [&](int shift) { return static_cast<int>((color >> shift) & 0xFFU); };
  return {part(0), part(8), part(16)};
}

QColor LineColor(const QPalette &palette) {
  constexpr float share_of_text = 0.28F;
  const QColor ground = palette.color(QPalette::Window);
  const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
  const auto mix = [](float a, float b) { return a + (b - a) * share_of_text; };
  return QColor::fromRgbF(mix(ground.redF(), text.redF()), mix(ground.greenF(), text.greenF()),
                          mix(ground.blueF(), text.blueF()));
}

}  // namespace borvane
