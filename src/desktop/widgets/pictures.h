#pragma once

#include <QCursor>
#include <QIcon>
#include <string_view>

class QColor;
class QPainter;
class QRect;

namespace borvane {

// The program's pictures are SVG files of assets/pictures/ that are compiled in. "currentColor" in a file is the colour
// of the lines, which comes from the desktop's palette. They are named by their files: "refresh", "watermark", ...

/// Draws the picture `name` into `place`, with `color` as the colour of its lines. Draws nothing for an unknown name.
void DrawPicture(QPainter &painter, std::string_view name, const QRect &place, const QColor &color);

/// The picture `name` for a button: its lines have the colour of the palette's button text, at any size.
QIcon PictureIcon(std::string_view name);

/// The picture `name` as a mouse pointer, sharp on a screen with that many device pixels to a pixel. Its upper left
/// corner is what it points at.
QCursor PicturePointer(std::string_view name, qreal pixel_ratio);

/// The program's own icon, for its windows.
QIcon ProgramIcon();

}  // namespace borvane
