#pragma once

#include <QFont>
#include <QSize>
#include <QString>

#include "controls/font.h"

namespace borvane {

// Labels are measured and drawn with the same font, so that what sizes itself by its text fits it exactly.

/// The program's `font` on the screen.
QFont ScreenFont(const Font &font);

/// The size of `text` in one line, in pixels.
QSize TextSize(const QString &text, const QFont &font);

/// The size of `text` in lines of `width` pixels. A word that is wider makes it wider.
QSize WrappedTextSize(const QString &text, const QFont &font, int width);

}  // namespace borvane
