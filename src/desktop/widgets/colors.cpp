#include "desktop/widgets/colors.h"

#include <algorithm>
#include <cmath>

namespace borvane {

namespace {

constexpr Color system_bit = 0x80000000;

/// The part of the palette that is a colour of the system.
QColor SystemColor(Color color, const QPalette &palette) {
  switch (color) {
    case color_desktop:
    case color_active_caption:
      return palette.color(QPalette::Highlight);
    case color_highlight_text:
      return palette.color(QPalette::HighlightedText);
    case color_button_face:
      return palette.color(QPalette::Window);
    case color_inactive_caption_text:
      // The text of the bars, which are black or blue whatever the desktop's colours are.
      return {235, 235, 235};
    default:
      return palette.color(QPalette::WindowText);
  }
}

QColor Mixed(const QColor &first, const QColor &second, float share_of_second) {
  const auto mix = [&](float a, float b) { return a + (b - a) * share_of_second; };
  return QColor::fromRgbF(mix(first.redF(), second.redF()), mix(first.greenF(), second.greenF()),
                          mix(first.blueF(), second.blueF()));
}

/// The relative luminance of sRGB, from 0 to 1.
double Luminance(const QColor &color) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// The ratio of two colours' luminances as for web pages, from 1 to 21.
double ContrastOf(const QColor &first, const QColor &second) {
  constexpr double glare = 0.05;
  const auto [dark, light] = std::minmax({Luminance(first), Luminance(second)});
  return (light + glare) / (dark + glare);
}

}  // namespace

QColor ScreenColor(Color color, const QPalette &palette) {
  if ((color & system_bit) != 0)
    return SystemColor(color, palette);
  const auto part = [&](int shift) { return static_cast<int>((color >> shift) & 0xFFU); };
  return {part(0), part(8), part(16)};
}

QColor TextColor(Color color, const QColor &background, const QPalette &palette) {
  constexpr double readable = 4.5;
  const QColor wanted = ScreenColor(color, palette);
  if ((color & system_bit) == 0 || ContrastOf(wanted, background) >= readable)
    return wanted;
  return ContrastOf(Qt::black, background) > ContrastOf(Qt::white, background) ? Qt::black : Qt::white;
}

QPalette BackgroundPalette(Color background, const QPalette &palette) {
  if (background == color_button_face)
    return {};
  constexpr float share_of_text_when_disabled = 0.5F;
  const QColor window = ScreenColor(background, palette);
  const QColor text = TextColor(color_button_text, window, palette);
  QPalette result;
  result.setColor(QPalette::Window, window);
  result.setColor(QPalette::WindowText, text);
  result.setColor(QPalette::Disabled, QPalette::WindowText, Mixed(window, text, share_of_text_when_disabled));
  return result;
}

bool IsDark(const QPalette &palette) { return palette.color(QPalette::Window).lightnessF() <= 0.5F; }

QColor LineColor(const QPalette &palette) {
  constexpr float share_of_text = 0.34F;
  return Mixed(palette.color(QPalette::Window), palette.color(QPalette::Active, QPalette::WindowText), share_of_text);
}

QColor WatermarkColor(const QPalette &palette) {
  constexpr float share_on_light = 0.9F;
  constexpr float share_on_dark = 0.25F;
  return Mixed(palette.color(QPalette::Window), Qt::white, IsDark(palette) ? share_on_dark : share_on_light);
}

}  // namespace borvane
