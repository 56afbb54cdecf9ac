#pragma once

#include <QRect>
#include <QtMath>

namespace borvane {

/// The program measures in twips, the screen in pixels.
inline constexpr float twips_per_pixel = 15;

inline int PixelsOf(float twips) { return qRound(twips / twips_per_pixel); }

inline float TwipsOf(int pixels) { return static_cast<float>(pixels) * twips_per_pixel; }

/// A rectangle in pixels. Each edge is rounded on its own, so that what touches in twips touches on the screen.
inline QRect RectOf(float left, float top, float width, float height) {
  const QPoint corner(PixelsOf(left), PixelsOf(top));
  return {corner, QSize(PixelsOf(left + width) - corner.x(), PixelsOf(top + height) - corner.y())};
}

}  // namespace borvane
