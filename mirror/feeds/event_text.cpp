#include "feeds/event_text.h"

#include <QByteArrayView>
#include <QDateTime>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

namespace borvane::mirror {

namespace {

/// The columns of which something is made.
enum class Column { Id, Time, Latitude, Longitude, Depth, Author, Contributor, Magnitude, Place, Kind };

/// Its name in a header, in any letters, and where it is without one.
struct ColumnName {
  const char *name;
  std::size_t place;
  bool is_needed;
};

/// In the order of Column.
constexpr std::array<ColumnName, 10> column_names = {{{"EventID", 0, true},
                                                      {"Time", 1, true},
                                                      {"Latitude", 2, true},
                                                      {"Longitude", 3, true},
                                                      {"Depth/km", 4, false},
                                                      {"Author", 5, false},
                                                      {"Contributor", 7, false},
                                                      {"Magnitude", 10, false},
                                                      {"EventLocationName", 12, false},
                                                      {"EventType", 13, false}}};

/// Where the columns of a text are.
struct Columns {
  std::array<std::optional<std::size_t>, column_names.size()> places;
  std::size_t count = 0;
};

// A line may be all separators; the form has 14 columns.
constexpr qsizetype most_columns = 64;

using TextFields = std::vector<QByteArrayView>;

/// Takes what comes before the next `separator` off the front of `rest`, and the separator with it; all of it when
/// there is none.
QByteArrayView TakeUntil(QByteArrayView &rest, char separator) {
  const qsizetype end = rest.indexOf(separator);
  const QByteArrayView taken = end < 0 ? rest : rest.first(end);
  rest = end < 0 ? QByteArrayView() : rest.sliced(end + 1);
  return taken;
}

/// The fields of a line without the blanks around them; none for a line that has too many.
TextFields FieldsOf(QByteArrayView line) {
  TextFields fields;
  const qsizetype count = line.count('|') + 1;
  if (count > most_columns)
    return fields;
  fields.reserve(static_cast<std::size_t>(count));
  for (qsizetype i = 0; i < count; ++i)
    fields.push_back(TakeUntil(line, '|').trimmed());
  return fields;
}

/// The columns of a text without a header, whose lines have the fields of the first version or one more.
Columns StandardColumns(std::size_t fields) {
  constexpr std::size_t without_kind = 13;
  Columns columns;
  columns.count = fields == without_kind + 1 ? fields : without_kind;
  for (std::size_t column = 0; column < column_names.size(); ++column)
    if (column_names[column].place < columns.count)
      columns.places[column] = column_names[column].place;
  return columns;
}

Columns NamedColumns(const TextFields &names) {
  Columns columns;
  columns.count = names.size();
  for (std::size_t column = 0; column < column_names.size(); ++column)
    for (std::size_t place = 0; place < names.size() && !columns.places[column]; ++place)
      if (names[place].compare(column_names[column].name, Qt::CaseInsensitive) == 0)
        columns.places[column] = place;
  return columns;
}

/// Takes a number of exactly `length` digits off the front of `rest`; -1 when it begins with anything else.
int TakeDigits(QByteArrayView &rest, qsizetype length) {
  int number = 0;
  if (rest.size() < length)
    return -1;
  for (qsizetype i = 0; i < length; ++i) {
    if (rest[i] < '0' || rest[i] > '9')
      return -1;
    number = 10 * number + (rest[i] - '0');
  }
  rest = rest.sliced(length);
  return number;
}

/// Takes `character` off the front of `rest`; false when it begins with another.
bool Take(QByteArrayView &rest, char character) {
  if (rest.isEmpty() || rest.front() != character)
    return false;
  rest = rest.sliced(1);
  return true;
}

/// Takes a fraction of a second, such as ".125", off the front of `rest`, as milliseconds. No fraction is 0; -1 for a
/// point without digits.
int TakeFraction(QByteArrayView &rest) {
  if (!Take(rest, '.'))
    return 0;
  int milliseconds = 0;
  int unit = 100;
  qsizetype digits = 0;
  for (; digits < rest.size() && rest[digits] >= '0' && rest[digits] <= '9'; ++digits) {
    milliseconds += unit * (rest[digits] - '0');
    unit /= 10;
  }
  rest = rest.sliced(digits);
  return digits == 0 ? -1 : milliseconds;
}

/// The time of "2026-06-19T03:04:05.12Z" in milliseconds since 1970; nothing for what is no time of an event. A leap
/// second is taken for the last moment before it.
std::optional<qint64> ReadEventTime(QByteArrayView text) {
  const int year = TakeDigits(text, 4);
  const int month = Take(text, '-') ? TakeDigits(text, 2) : -1;
  const int day = Take(text, '-') ? TakeDigits(text, 2) : -1;
  const int hour = Take(text, 'T') ? TakeDigits(text, 2) : -1;
  const int minute = Take(text, ':') ? TakeDigits(text, 2) : -1;
  const int second = Take(text, ':') ? TakeDigits(text, 2) : -1;
  const int milliseconds = TakeFraction(text);
  Take(text, 'Z');
  const bool is_leap_second = minute == 59 && second == 60;
  const QDate date(year, month, day);
  const QTime time = is_leap_second ? QTime(hour, minute, 59, 999) : QTime(hour, minute, second, milliseconds);
  if (!text.isEmpty() || milliseconds < 0 || !date.isValid() || !time.isValid())
    return std::nullopt;
  const qint64 moment = QDateTime(date, time, Qt::UTC).toMSecsSinceEpoch();
  return IsOriginTime(static_cast<double>(moment)) ? std::optional(moment) : std::nullopt;
}

std::optional<double> ReadDecimal(QByteArrayView text) {
  bool is_number = false;
  const double value = text.toDouble(&is_number);
  return is_number && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

/// The field of that column; empty where there is no such column.
QByteArrayView FieldAt(const TextFields &fields, const Columns &columns, Column column) {
  const std::optional<std::size_t> place = columns.places[static_cast<std::size_t>(column)];
  return place ? fields[*place] : QByteArrayView();
}

std::optional<FeedEvent> ReadEventLine(const TextFields &fields, const Columns &columns) {
  if (fields.size() != columns.count)
    return std::nullopt;
  const auto field = [&](Column column) { return FieldAt(fields, columns, column); };
  const std::optional<qint64> time = ReadEventTime(field(Column::Time));
  const std::optional<double> latitude = ReadDecimal(field(Column::Latitude));
  const std::optional<double> longitude = ReadDecimal(field(Column::Longitude));
  const std::optional<double> normal_longitude = longitude ? NormalLongitude(*longitude) : std::nullopt;
  const QString id = QString::fromUtf8(field(Column::Id));
  if (!IsEventId(id) || !time || !latitude || std::abs(*latitude) > 90 || !normal_longitude)
    return std::nullopt;

  FeedEvent read;
  read.event.id = id;
  read.ids = QStringList(id);
  read.event.origin_time = *time;
  read.event.latitude = *latitude;
  read.event.longitude = *normal_longitude;
  if (const std::optional<double> depth = ReadDecimal(field(Column::Depth)))
    read.event.depth = PlausibleDepth(*depth);
  if (const std::optional<double> magnitude = ReadDecimal(field(Column::Magnitude)))
    read.event.magnitude = PlausibleMagnitude(*magnitude);
  read.event.place = QString::fromUtf8(field(Column::Place));
  read.event.network =
      QString::fromUtf8(field(field(Column::Contributor).isEmpty() ? Column::Author : Column::Contributor));
  // The services that leave the kind out have few events that are not earthquakes.
  read.event.kind = field(Column::Kind).isEmpty() ? QString("earthquake") : QString::fromUtf8(field(Column::Kind));
  return read;
}

/// The id of a line that is no event; none when it is not usable, or cannot be found as the fields do not fit.
QStringList IdOfUnread(const TextFields &fields, const Columns &columns) {
  const std::size_t place = columns.places[static_cast<std::size_t>(Column::Id)].value_or(0);
  if (fields.empty() || (fields.size() != columns.count && place != 0))
    return {};
  const QString id = QString::fromUtf8(fields[place]);
  return IsEventId(id) ? QStringList(id) : QStringList();
}

/// What the header lacks; empty for nothing.
QString HeaderFault(const Columns &columns) {
  for (std::size_t column = 0; column < column_names.size(); ++column)
    if (column_names[column].is_needed && !columns.places[column])
      return QString("its header has no column \"%1\"").arg(column_names[column].name);
  return {};
}

}  // namespace

FeedReading ReadEventText(const QByteArray &text) {
  QByteArrayView rest = text;
  if (rest.startsWith("\xEF\xBB\xBF"))
    rest = rest.sliced(3);

  FeedReading reading;
  std::optional<Columns> named;
  while (!rest.isEmpty()) {
    QByteArrayView line = TakeUntil(rest, '\n').trimmed();
    if (Take(line, '#')) {
      const bool is_header = !named && reading.events.empty() && reading.left_out == 0 && line.contains('|');
      if (!is_header)
        continue;
      named = NamedColumns(FieldsOf(line));
      if (const QString fault = HeaderFault(*named); !fault.isEmpty())
        return FaultyReading(fault);
    } else if (!line.isEmpty()) {
      const TextFields fields = FieldsOf(line);
      const Columns columns = named ? *named : StandardColumns(fields.size());
      if (std::optional<FeedEvent> event = ReadEventLine(fields, columns))
        reading.events.push_back(std::move(*event));
      else
        LeaveOut(reading, IdOfUnread(fields, columns));
      if (reading.events.size() + static_cast<std::size_t>(reading.left_out) > most_feed_events)
        return FaultyReading(QString("more than %1 events").arg(most_feed_events));
    }
  }
  if (!named && reading.events.empty() && reading.left_out > 0)
    return FaultyReading("not the event text form");
  return FinishReading(std::move(reading));
}

}  // namespace borvane::mirror
