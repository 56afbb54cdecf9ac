#include "catalogue/sample.h"

#include <QDateTime>
#include <QFile>
#include <cmath>

namespace borvane::mirror {

namespace {

constexpr std::size_t columns = 8;

std::vector<QString> Fields(const QByteArray &line) {
  std::vector<QString> fields(1);
  bool quoted = false;
  for (const QChar character : QString::fromUtf8(line)) {
    if (character == '"')
      quoted = !quoted;
    else if (character == ',' && !quoted)
      fields.emplace_back();
    else
      fields.back() += character;
  }
  return fields;
}

std::optional<double> Number(const QString &field) {
  bool good = false;
  const double value = field.toDouble(&good);
  return good && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<Event> ReadLine(const QByteArray &line) {
  const std::vector<QString> fields = Fields(line);
  if (fields.size() != columns)
    return std::nullopt;
  const QDateTime time = QDateTime::fromString(fields[1], Qt::ISODate);
  const std::optional<double> latitude = Number(fields[2]);
  const std::optional<double> longitude = Number(fields[3]);
  if (!IsEventId(fields[0]) || !time.isValid() || !latitude || !longitude)
    return std::nullopt;
  return Event{.id = fields[0],
               .origin_time = time.toMSecsSinceEpoch(),
               .latitude = *latitude,
               .longitude = *longitude,
               .depth = Number(fields[4]),
               .magnitude = Number(fields[5]),
               .place = fields[6],
               .network = fields[7],
               .kind = "earthquake"};
}

}  // namespace

std::vector<Event> SampleEvents() {
  QFile file(":/sample.csv");
  if (!file.open(QIODevice::ReadOnly))
    return {};
  return ReadEventTable(file.readAll());
}

std::vector<Event> ReadEventTable(const QByteArray &table) {
  std::vector<Event> events;
  const QList<QByteArray> lines = table.split('\n');
  for (qsizetype i = 1; i < lines.size(); ++i)
    if (std::optional<Event> event = ReadLine(lines[i]))
      events.push_back(std::move(*event));
  return events;
}

}  // namespace borvane::mirror
