#include "desktop/widgets/swatch.h"

#include <QPainter>
#include <algorithm>
#include <array>

#include "desktop/widgets/colors.h"

namespace borvane {

namespace {

struct NamedColor {
  Color color;
  const char *name;
};

/// The colours that a user can choose, and those of the design, as a screen reader names them.
constexpr std::array named_colors = {
    NamedColor{0x000000, "black"},      NamedColor{0xFF0000, "blue"},        NamedColor{0x0000FF, "red"},
    NamedColor{0x00FF00, "green"},      NamedColor{0xFFFF00, "cyan"},        NamedColor{0xFF00FF, "magenta"},
    NamedColor{0xFFFFFF, "white"},      NamedColor{0x00FFFF, "yellow"},      NamedColor{0x80000001, "desktop colour"},
    NamedColor{0x7F7F7F, "grey"},       NamedColor{0x0066FF, "orange"},      NamedColor{0xFFA43C, "light blue"},
    NamedColor{0xAA00FF, "pink"},       NamedColor{0x78FFDD, "light green"}, NamedColor{0xFFC8FF, "light pink"},
    NamedColor{0x00C000, "dark green"},
};

QString NameOf(Color color) {
  const auto *named = std::find_if(named_colors.begin(), named_colors.end(),
                                   [&](const NamedColor &other) { return other.color == color; });
  return named == named_colors.end() ? QString() : QString::fromLatin1(named->name);
}

}  // namespace

Swatch::Swatch(QWidget *parent) : QPushButton(parent) { setAutoDefault(false); }

void Swatch::ShowColor(Color color) {
  color_ = color;
  ShowName();
  update();
}

void Swatch::SetLabel(const QString &label) {
  label_ = label;
  ShowName();
}

void Swatch::ShowName() {
  const QString color = NameOf(color_);
  setAccessibleName(label_.isEmpty() || color.isEmpty() ? label_ + color : label_ + QStringLiteral(": ") + color);
}

void Swatch::paintEvent(QPaintEvent * /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), hasFocus() ? palette().color(QPalette::Highlight) : LineColor(palette()));
  // Inside its edge a ring of the window's colour, so that the edge is seen around every colour.
  const int edge = hasFocus() ? 2 : 1;
  painter.fillRect(rect().adjusted(edge, edge, -edge, -edge), palette().color(QPalette::Window));
  painter.fillRect(rect().adjusted(edge + 1, edge + 1, -edge - 1, -edge - 1), ScreenColor(color_, palette()));
}

}  // namespace borvane
