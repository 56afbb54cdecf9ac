#include "support/mirror/plain_event_text.h"

#include <QDateTime>
#include <QMap>
#include <QRegularExpression>
#include <cmath>
#include <sstream>

namespace borvane::mirror {

namespace {

using PlainFields = QList<QByteArray>;

PlainFields PlainFieldsOf(const QByteArray &line) {
  PlainFields fields;
  for (const QByteArray &field : line.split('|'))
    fields += field.trimmed();
  return fields.size() > 64 ? PlainFields() : fields;
}

/// The value of each named field; empty when the line does not fit the names.
QMap<QByteArray, QByteArray> ByName(const PlainFields &names, const PlainFields &fields) {
  QMap<QByteArray, QByteArray> values;
  if (names.size() != fields.size())
    return values;
  for (qsizetype i = names.size() - 1; i >= 0; --i)
    values[names[i].toLower()] = fields[i];
  return values;
}

std::optional<qint64> PlainTime(const QByteArray &text) {
  static const QRegularExpression form(
      QRegularExpression::anchoredPattern(R"(([0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2})(\.[0-9]+)?Z?)"));
  const QRegularExpressionMatch match = form.match(QString::fromLatin1(text));
  if (!match.hasMatch())
    return std::nullopt;
  QString second = match.captured(1);
  QString milliseconds = (match.captured(2).mid(1) + "000").left(3);
  if (second.endsWith(":59:60")) {
    second.replace(":59:60", ":59:59");
    milliseconds = "999";
  }
  const QDate date = QDate::fromString(second.left(10), "yyyy-MM-dd");
  const QTime time = QTime::fromString(second.mid(11) + "." + milliseconds, "HH:mm:ss.zzz");
  if (!date.isValid() || !time.isValid() || date.year() < 1000)
    return std::nullopt;
  const qint64 moment = QDateTime(date, time, Qt::UTC).toMSecsSinceEpoch();
  return IsOriginTime(static_cast<double>(moment)) ? std::optional(moment) : std::nullopt;
}

std::optional<double> PlainNumber(const QByteArray &text) {
  bool is_number = false;
  const double value = text.toDouble(&is_number);
  return is_number && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<FeedEvent> PlainEvent(const QMap<QByteArray, QByteArray> &values) {
  const std::optional<qint64> time = PlainTime(values["time"]);
  const std::optional<double> latitude = PlainNumber(values["latitude"]);
  const std::optional<double> longitude = PlainNumber(values["longitude"]);
  const QString id = QString::fromUtf8(values["eventid"]);
  if (!IsEventId(id) || !time || !latitude || !longitude || std::abs(*latitude) > 90 || std::abs(*longitude) > 360)
    return std::nullopt;
  const std::optional<double> depth = PlainNumber(values["depth/km"]);
  const std::optional<double> magnitude = PlainNumber(values["magnitude"]);
  const QByteArray network = values["contributor"].isEmpty() ? values["author"] : values["contributor"];
  const QByteArray kind = values["eventtype"].isEmpty() ? "earthquake" : values["eventtype"];
  FeedEvent read;
  read.event = Event{.id = id,
                     .origin_time = *time,
                     .latitude = *latitude,
                     .longitude = NormalLongitude(*longitude).value(),
                     .depth = depth ? PlausibleDepth(*depth) : std::nullopt,
                     .magnitude = magnitude ? PlausibleMagnitude(*magnitude) : std::nullopt,
                     .place = QString::fromUtf8(values["eventlocationname"]),
                     .network = QString::fromUtf8(network),
                     .kind = QString::fromUtf8(kind)};
  read.ids = {id};
  return read;
}

/// The id of a line that is no event, where the names say or the form always has it first; empty for none.
QString PlainUnreadId(const PlainFields &names, const PlainFields &fields) {
  QString id;
  if (names.size() == fields.size())
    id = QString::fromUtf8(ByName(names, fields)["eventid"]);
  else if (names.first().toLower() == "eventid")
    id = QString::fromUtf8(fields.value(0));
  return IsEventId(id) ? id : QString();
}

PlainFields NamesWithout(const PlainFields &fields) {
  PlainFields names = {"eventid",   "time",      "latitude",         "longitude",     "depth/km",
                       "author",    "catalog",   "contributor",      "contributorid", "magtype",
                       "magnitude", "magauthor", "eventlocationname"};
  if (fields.size() == names.size() + 1)
    names += "eventtype";
  return names;
}

}  // namespace

FeedReading ReadEventTextPlainly(const QByteArray &text) {
  FeedReading reading;
  std::optional<PlainFields> names;
  const QByteArray plain = text.startsWith("\xEF\xBB\xBF") ? text.mid(3) : text;
  for (const QByteArray &whole_line : plain.split('\n')) {
    const QByteArray line = whole_line.trimmed();
    if (line.isEmpty())
      continue;
    const bool is_first = !names && reading.events.empty() && reading.left_out == 0;
    if (line.startsWith('#') && is_first && line.contains('|')) {
      names = PlainFieldsOf(line.mid(1));
      const QMap<QByteArray, QByteArray> columns = ByName(*names, *names);
      for (const char *needed : {"EventID", "Time", "Latitude", "Longitude"})
        if (!columns.contains(QByteArray(needed).toLower()))
          return FaultyReading(QString("its header has no column \"%1\"").arg(needed));
    } else if (!line.startsWith('#')) {
      const PlainFields fields = PlainFieldsOf(line);
      const PlainFields columns = names ? *names : NamesWithout(fields);
      if (std::optional<FeedEvent> event = PlainEvent(ByName(columns, fields))) {
        reading.events.push_back(*event);
        continue;
      }
      ++reading.left_out;
      const QString id = PlainUnreadId(columns, fields);
      if (id.isEmpty())
        ++reading.nameless;
      else
        reading.unread_ids += id;
    }
  }
  if (reading.events.size() + static_cast<std::size_t>(reading.left_out) > most_feed_events)
    return FaultyReading(QString("more than %1 events").arg(most_feed_events));
  if (!names && reading.events.empty() && reading.left_out > 0)
    return FaultyReading("not the event text form");
  return FinishReading(std::move(reading));
}

std::string DescriptionOf(const FeedReading &reading) {
  std::ostringstream text;
  text.precision(17);
  text << "made " << reading.generated << ", left out " << reading.left_out << " (" << reading.nameless
       << " without an id, the others " << reading.unread_ids.join(' ').toStdString() << "), fault \""
       << reading.fault.toStdString() << "\"\n";
  for (const FeedEvent &read : reading.events) {
    const Event &event = read.event;
    text << event.id.toStdString() << '|' << event.origin_time << '|' << event.latitude << '|' << event.longitude
         << '|';
    if (event.depth)
      text << *event.depth;
    text << '|';
    if (event.magnitude)
      text << *event.magnitude;
    text << '|' << event.place.toStdString() << '|' << event.network.toStdString() << '|' << event.kind.toStdString()
         << '|' << read.updated << '|' << read.ids.join(' ').toStdString() << (read.deleted ? "|deleted\n" : "\n");
  }
  return text.str();
}

}  // namespace borvane::mirror
