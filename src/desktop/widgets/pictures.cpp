#include "desktop/widgets/pictures.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace borvane {

namespace {

/// The text of the picture's file with its lines in `color`; empty for an unknown name.
QByteArray PictureText(std::string_view name, const QColor &color) {
  QFile file(QStringLiteral(":/pictures/%1.svg").arg(QLatin1String(name.data(), static_cast<int>(name.size()))));
  if (!file.open(QIODevice::ReadOnly))
    return {};
  return file.readAll().replace("currentColor", color.name().toLatin1());
}

/// The picture as pixels. It is made when it is first asked for in that size and colour.
QPixmap PicturePixels(std::string_view name, const QSize &size, const QColor &color) {
  const QString key = QStringLiteral("borvane-%1-%2x%3-%4")
                          .arg(QLatin1String(name.data(), static_cast<int>(name.size())))
                          .arg(size.width())
                          .arg(size.height())
                          .arg(color.rgba());
  QPixmap pixels;
  if (!QPixmapCache::find(key, &pixels)) {
    pixels = QPixmap(size);
    pixels.fill(Qt::transparent);
    QPainter painter(&pixels);
    DrawPicture(painter, name, pixels.rect(), color);
    painter.end();
    QPixmapCache::insert(key, pixels);
  }
  return pixels;
}

/// Draws a picture again at each size, in the colours that the desktop has at that moment.
class PictureEngine final : public QIconEngine {
 public:
  explicit PictureEngine(std::string_view name) : name_(name) {}

  void paint(QPainter *painter, const QRect &place, QIcon::Mode mode, QIcon::State /*state*/) override {
    DrawPicture(*painter, name_, place, LineColor(mode));
  }

  QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State /*state*/) override {
    return PicturePixels(name_, size, LineColor(mode));
  }

  /// The sizes that a window manager is given.
  QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
    return {{16, 16}, {32, 32}, {48, 48}};
  }

  QIconEngine *clone() const override { return new PictureEngine(*this); }

 private:
  static QColor LineColor(QIcon::Mode mode) {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    return QGuiApplication::palette().color(group, QPalette::ButtonText);
  }

  std::string_view name_;
};

}  // namespace

void DrawPicture(QPainter &painter, std::string_view name, const QRect &place, const QColor &color) {
  const QByteArray text = PictureText(name, color);
  if (text.isEmpty())
    return;
  QSvgRenderer renderer(text);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setOpacity(painter.opacity() * color.alphaF());
  renderer.render(&painter, place);
  painter.restore();
}

QIcon PictureIcon(std::string_view name) { return QIcon(new PictureEngine(name)); }

QCursor PicturePointer(std::string_view name, qreal pixel_ratio) {
  constexpr int pixels = 24;
  const QSize size = (QSizeF(pixels, pixels) * pixel_ratio).toSize();
  QPixmap picture = PicturePixels(name, size, Qt::black);
  picture.setDevicePixelRatio(pixel_ratio);
  return QCursor(picture, 0, 0);
}

QIcon ProgramIcon() { return QIcon(new PictureEngine("borvane")); }

}  // namespace borvane
