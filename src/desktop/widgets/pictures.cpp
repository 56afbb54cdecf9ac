#include "desktop/widgets/pictures.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <algorithm>
#include <array>
#include <cmath>

namespace borvane {

namespace {

/// All pictures but the watermark are drawn on a field of this width and height.
constexpr qreal field = 24;
constexpr qreal line_width = 1.8;

QPen LinePen(const QColor &color, qreal width = line_width) {
  return {color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

/// A seismogram around the line y, from x on: quiet, a shock, and its end.
QPainterPath Trace(qreal x, qreal y, qreal width, qreal height) {
  struct Swing {
    qreal at;    // of the width
    qreal high;  // of half the height, upwards
  };
  constexpr std::array swings = {Swing{0.25, 0}, Swing{0.33, 0.35}, Swing{0.41, -0.5}, Swing{0.5, 1},
                                 Swing{0.6, -1}, Swing{0.68, 0.45}, Swing{0.75, 0},    Swing{1, 0}};
  QPainterPath path(QPointF(x, y));
  for (const Swing &swing : swings)
    path.lineTo(x + width * swing.at, y - height / 2 * swing.high);
  return path;
}

/// Two arrows in a ring.
void DrawRefresh(QPainter &painter) {
  const QRectF ring(4.5, 4.5, 15, 15);
  constexpr int sixteenths = 16;
  painter.drawArc(ring, 20 * sixteenths, 140 * sixteenths);
  painter.drawArc(ring, 200 * sixteenths, 140 * sixteenths);
  painter.drawPolyline(QPolygonF({{19.8, 4.8}, {19.2, 9.6}, {14.6, 8.6}}));
  painter.drawPolyline(QPolygonF({{4.2, 19.2}, {4.8, 14.4}, {9.4, 15.4}}));
}

/// Three sliders.
void DrawSettings(QPainter &painter) {
  struct Slider {
    qreal y;
    qreal knob;
  };
  constexpr qreal radius = 2.2;
  for (const Slider &slider : {Slider{6, 15.5}, Slider{12, 8}, Slider{18, 13.5}}) {
    painter.drawLine(QPointF(3, slider.y), QPointF(slider.knob - radius, slider.y));
    painter.drawLine(QPointF(slider.knob + radius, slider.y), QPointF(21, slider.y));
    painter.drawEllipse(QPointF(slider.knob, slider.y), radius, radius);
  }
}

void DrawLongBar(QPainter &painter) {
  painter.drawRoundedRect(QRectF(1.5, 7.5, 21, 9), 1.5, 1.5);
  painter.drawPath(Trace(4, 12, 16, 5));
}

void DrawShortBar(QPainter &painter) {
  painter.drawRoundedRect(QRectF(6, 7.5, 12, 9), 1.5, 1.5);
  painter.drawPath(Trace(8, 12, 8, 5));
}

/// The sign for power.
void DrawQuit(QPainter &painter) {
  constexpr int sixteenths = 16;
  painter.drawArc(QRectF(4.5, 5, 15, 15), 125 * sixteenths, 290 * sixteenths);
  painter.drawLine(QPointF(12, 3), QPointF(12, 11.5));
}

/// The maker's name with a long trace, faint on any ground.
void DrawWatermark(QPainter &painter, const QRect &place, QColor color) {
  constexpr qreal faint = 0.16;
  color.setAlphaF(static_cast<float>(faint));
  const qreal height = place.height();
  QFont font = painter.font();
  font.setPixelSize(static_cast<int>(height * 0.62));
  font.setLetterSpacing(QFont::AbsoluteSpacing, height * 0.12);
  font.setBold(true);
  painter.setFont(font);
  painter.setPen(LinePen(color, height / 20));
  const QRectF name =
      painter.boundingRect(QRectF(place), Qt::AlignRight | Qt::AlignVCenter, QStringLiteral("Nalvorin"));
  painter.drawText(name, Qt::AlignCenter, QStringLiteral("Nalvorin"));
  painter.drawPath(Trace(place.left(), place.center().y(), name.left() - place.left() - height / 3, height * 0.8));
}

struct Picture {
  std::string_view name;
  void (*draw)(QPainter &);
};

constexpr std::array pictures = {Picture{"refresh", DrawRefresh}, Picture{"settings", DrawSettings},
                                 Picture{"longbar", DrawLongBar}, Picture{"shortbar", DrawShortBar},
                                 Picture{"quit", DrawQuit}};

/// Draws a picture anew at each size.
class PictureEngine final : public QIconEngine {
 public:
  explicit PictureEngine(std::string_view name) : name_(name) {}

  void paint(QPainter *painter, const QRect &place, QIcon::Mode mode, QIcon::State /*state*/) override {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    DrawPicture(*painter, name_, place, QGuiApplication::palette().color(group, QPalette::ButtonText));
  }

  QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect({}, size), mode, state);
    return pixmap;
  }

  QIconEngine *clone() const override { return new PictureEngine(*this); }

 private:
  std::string_view name_;
};

/// A trace on a dark plate, which stands out on light and dark ground alike.
class ProgramIconEngine final : public QIconEngine {
 public:
  void paint(QPainter *painter, const QRect &place, QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(place.topLeft());
    painter->scale(place.width() / field, place.height() / field);
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(0x1f, 0x3a, 0x4d));
    painter->drawRoundedRect(QRectF(1, 1, 22, 22), 5, 5);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(LinePen(QColor(0xf2, 0xa9, 0x3b), 2));
    painter->drawPath(Trace(3.5, 12, 17, 13));
    painter->restore();
  }

  QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect({}, size), mode, state);
    return pixmap;
  }

  QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
    return {{16, 16}, {32, 32}, {48, 48}};
  }

  QIconEngine *clone() const override { return new ProgramIconEngine(*this); }
};

}  // namespace

void DrawPicture(QPainter &painter, std::string_view name, const QRect &place, const QColor &color) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  if (name == "watermark") {
    DrawWatermark(painter, place, color);
  } else {
    const auto *picture =
        std::find_if(pictures.begin(), pictures.end(), [&](const Picture &known) { return known.name == name; });
    if (picture != pictures.end()) {
      painter.translate(place.topLeft());
      painter.scale(place.width() / field, place.height() / field);
      painter.setPen(LinePen(color));
      painter.setBrush(Qt::NoBrush);
      picture->draw(painter);
    }
  }
  painter.restore();
}

QIcon PictureIcon(std::string_view name) { return QIcon(new PictureEngine(name)); }

QIcon ProgramIcon() { return QIcon(new ProgramIconEngine); }

}  // namespace borvane
