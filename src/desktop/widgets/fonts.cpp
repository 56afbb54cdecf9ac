#include "desktop/widgets/fonts.h"

#include <QApplication>
#include <QFontMetrics>
#include <algorithm>

#include "desktop/widgets/twips.h"
#include "desktop/windows_1252.h"

namespace borvane {

QFont ScreenFont(const Font &font) {
  constexpr float twips_per_point = 20;
  QFont result = QApplication::font();
  if (!font.name.empty())
    result.setFamilies(QStringList(ShownText(font.name)) + result.families());
  if (font.size > 0)
    result.setPixelSize(std::max(1, PixelsOf(font.size * twips_per_point)));
  result.setBold(font.bold);
  return result;
}

QSize TextSize(const QString &text, const QFont &font) { return QFontMetrics(font).size(Qt::TextSingleLine, text); }

QSize WrappedTextSize(const QString &text, const QFont &font, int width) {
  return QFontMetrics(font).boundingRect({0, 0, width, 0}, Qt::TextWordWrap, text).size();
}

}  // namespace borvane
