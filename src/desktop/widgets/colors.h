#pragma once

#include <QPalette>

#include "controls/label.h"

namespace borvane {

/// The program's colour on the screen; a colour of the system comes from `palette`, so that dark desktops stay
/// readable. One that has no part of the palette is that of plain text.
QColor ScreenColor(Color color, const QPalette &palette);

/// The colour of outlines and grid lines: seen on light and on dark ground, and quieter than text.
QColor LineColor(const QPalette &palette);

/// The colour of the watermark: nearly white on light ground, a shade lighter than the ground on dark.
QColor WatermarkColor(const QPalette &palette);

}  // namespace borvane
