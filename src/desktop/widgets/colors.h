#pragma once

#include <QPalette>

#include "controls/color.h"

namespace borvane {

/// The program's colour on the screen; a colour of the system comes from `palette`, so that dark desktops stay
/// readable. One that has no part of the palette is that of plain text.
QColor ScreenColor(Color color, const QPalette &palette);

/// The program's colour for a text on `background`. A colour of the system that would be hard to read there gives way
/// to black or white; one that the program or the user has chosen never does.
QColor TextColor(Color color, const QColor &background, const QPalette &palette);

/// The palette of a window or box on `background`, with plain text that can be read on it. Empty for the background
/// that all windows have.
QPalette BackgroundPalette(Color background, const QPalette &palette);

/// Whether the windows of these colours are dark.
bool IsDark(const QPalette &palette);

/// The colour of outlines and grid lines: it has at least 2:1 against light and dark ground, and is quieter than text.
QColor LineColor(const QPalette &palette);

/// The colour of the watermark: nearly white on light ground, a shade lighter than the ground on dark.
QColor WatermarkColor(const QPalette &palette);

}  // namespace borvane
