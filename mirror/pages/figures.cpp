#include "pages/figures.h"

#include <QDateTime>
#include <cmath>
#include <cstdio>

namespace borvane::mirror {

namespace {

QByteArray TimeText(const QDateTime &moment) {
  const QDate date = moment.date();
  const QTime time = moment.time();
  char text[32];
  std::snprintf(text, sizeof text, "%04d/%02d/%02d %02d:%02d:%02d", date.year(), date.month(), date.day(), time.hour(),
                time.minute(), time.second());
  return text;
}

QByteArray DegreesText(double degrees, char positive, char negative) {
  QByteArray text = QByteArray::number(degrees, 'f', 3);
  char letter = positive;
  if (text.startsWith('-')) {
    text.remove(0, 1);
    if (text != "0.000")
      letter = negative;
  }
  return text + letter;
}

QByteArray OneDecimal(double value) {
  const double tenths = std::round(value * 10);
  return QByteArray::number(tenths == 0 ? 0.0 : tenths / 10, 'f', 1);
}

}  // namespace

QByteArray MagnitudeText(double magnitude) { return OneDecimal(magnitude); }

QByteArray LatitudeText(double degrees) { return DegreesText(degrees, 'N', 'S'); }

QByteArray LongitudeText(double degrees) { return DegreesText(degrees, 'E', 'W'); }

QByteArray SignedDegreesText(double degrees) {
  const QByteArray text = QByteArray::number(degrees, 'f', 3);
  return text == "-0.000" ? "0.000" : text;
}

QByteArray DepthText(std::optional<double> kilometres) { return kilometres ? OneDecimal(*kilometres) : QByteArray(); }

QByteArray LocalTimeText(qint64 milliseconds) { return TimeText(QDateTime::fromMSecsSinceEpoch(milliseconds)); }

QByteArray UtcTimeText(qint64 milliseconds) { return TimeText(QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC)); }

}  // namespace borvane::mirror
