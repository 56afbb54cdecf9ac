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

QColor Mixed(const QColor &first, const QColor &second, float share_of_second) {
  const auto mix = [&](float a, float b) { return a + (b - a) * share_of_second; };
  return QColor::fromRgbF(mix(first.redF(), second.redF()), mix(first.greenF(), second.greenF()),
                          mix(first.blueF(), second.blueF()));
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
  return Mixed(palette.color(QPalette::Window), palette.color(QPalette::Active, QPalette::WindowText), share_of_text);
}

QColor WatermarkColor(const QPalette &palette) {
  constexpr float share_on_light = 0.9F;
  constexpr float share_on_dark = 0.25F;
  const QColor ground = palette.color(QPalette::Window);
  return Mixed(ground, Qt::white, ground.lightnessF() > 0.5F ? share_on_light : share_on_dark);
}

}  // namespace borvane
