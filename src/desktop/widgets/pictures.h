#pragma once

#include <QIcon>
#include <string_view>

class QPainter;
class QRect;
class QColor;

namespace borvane {

// The program's pictures, drawn as lines, so that they are sharp at every size and follow the desktop's colours. Their
// names: "refresh", "settings", "longbar", "shortbar", "quit", "watermark".

/// Draws the picture `name` into `place`, with `color` as the colour of its lines. Draws nothing for an unknown name.
void DrawPicture(QPainter &painter, std::string_view name, const QRect &place, const QColor &color);

/// The picture `name` for a button.
QIcon PictureIcon(std::string_view name);

/// The program's own icon, for its windows.
QIcon ProgramIcon();

}  // namespace borvane
