#include "desktop/appearance.h"

#include <QApplication>
#include <QFont>

namespace borvane {

void SetAppearance() {
  constexpr int font_pixels = 11;
  QFont font;
  // The texts must fit the controls' given widths, so the letters have the widths of the first of these wherever it or
  // one made to its measure is there.
  font.setFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("Arial"), QStringLiteral("Helvetica")});
  font.setStyleHint(QFont::SansSerif);
  font.setPixelSize(font_pixels);
  QApplication::setFont(font);
}

}  // namespace borvane
