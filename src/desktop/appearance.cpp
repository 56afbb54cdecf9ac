#include "desktop/appearance.h"

#include <QApplication>
#include <QFont>
#include <QStyle>

#include "desktop/widgets/colors.h"
#include "desktop/widgets/outline_style.h"

namespace borvane {

namespace {

void SetFont() {
  constexpr int font_pixels = 11;
  QFont font;
  // The texts must fit the controls' given widths, so the letters have the widths of the first of these wherever it or
  // one made to its measure is there.
  font.setFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("Arial"), QStringLiteral("Helvetica")});
  font.setStyleHint(QFont::SansSerif);
  font.setPixelSize(font_pixels);
  QApplication::setFont(font);
}

}  // namespace

void SetAppearance() {
  if (QApplication::style()->name() == QLatin1String("fusion"))
    QApplication::setStyle(new OutlineStyle);
  SetFont();
}

void PreferDark(bool is_preferred) {
  // An empty palette is the desktop's own.
  QApplication::setPalette({});
  if (is_preferred && !IsDark(QApplication::palette()))
    QApplication::setPalette(DarkPalette());
}

QPalette DarkPalette() {
  const QColor window(45, 45, 45);
  const QColor field(30, 30, 30);
  const QColor text(240, 240, 240);
  const QColor pale_text(130, 130, 130);
  QPalette palette(QColor(56, 56, 56), window);
  palette.setColor(QPalette::Base, field);
  palette.setColor(QPalette::AlternateBase, window);
  palette.setColor(QPalette::ToolTipBase, window);
  palette.setColor(QPalette::Highlight, QColor(48, 110, 170));
  for (const QPalette::ColorRole role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText, QPalette::HighlightedText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, pale_text);
  }
  palette.setColor(QPalette::Disabled, QPalette::Base, window);
  return palette;
}

}  // namespace borvane
