#include "feeds/answer_times.h"

#include <QByteArrayView>
#include <QDateTime>
#include <QLocale>
#include <algorithm>

namespace borvane::mirror {

namespace {

using std::chrono::seconds;

seconds WithinBounds(qint64 time) {
  return seconds(std::clamp<qint64>(time, 0, static_cast<qint64>(longest_answer_time.count())));
}

/// A whole number of seconds; nothing for anything but digits.
std::optional<qint64> ReadSeconds(const QByteArray &text) {
  constexpr qsizetype most_digits = 9;
  const bool has_digits_only =
      !text.isEmpty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
  if (!has_digits_only)
    return std::nullopt;
  return text.size() > most_digits ? static_cast<qint64>(longest_answer_time.count()) : text.toLongLong();
}

/// A moment such as "Fri, 19 Jun 2026 03:04:05 GMT", in seconds since 1970.
std::optional<qint64> ReadMoment(const QByteArray &text) {
  constexpr qsizetype length = 29;
  const QString moment = QString::fromLatin1(text);
  if (moment.size() != length || !moment.endsWith(" GMT"))
    return std::nullopt;
  const QDate date = QLocale::c().toDate(moment.sliced(5, 11), "dd MMM yyyy");
  const QTime time = QTime::fromString(moment.sliced(17, 8), "hh:mm:ss");
  if (!date.isValid() || !time.isValid())
    return std::nullopt;
  return QDateTime(date, time, Qt::UTC).toSecsSinceEpoch();
}

/// What Cache-Control says of the lifetime.
std::optional<qint64> ReadCacheControl(const QByteArray &text) {
  constexpr QByteArrayView max_age = "max-age=";
  std::optional<qint64> lifetime;
  for (const QByteArray &part : text.toLower().split(',')) {
    const QByteArray directive = part.trimmed();
    if (directive == "no-cache" || directive == "no-store")
      return 0;
    if (directive.startsWith(max_age))
      lifetime = ReadSeconds(directive.sliced(max_age.size()));
  }
  return lifetime;
}

}  // namespace

AnswerTimes ReadTimeHeaders(const TimeHeaders &headers, qint64 now) {
  const qint64 sent = ReadMoment(headers.date).value_or(now / 1000);
  AnswerTimes times;
  times.made = ReadMoment(headers.date).value_or(0) * 1000;
  if (const std::optional<qint64> lifetime = ReadCacheControl(headers.cache_control))
    times.lifetime = WithinBounds(*lifetime - ReadSeconds(headers.age).value_or(0));
  else if (!headers.expires.isEmpty())
    times.lifetime = WithinBounds(ReadMoment(headers.expires).value_or(sent) - sent);

  if (const std::optional<qint64> pause = ReadSeconds(headers.retry_after))
    times.retry_after = WithinBounds(*pause);
  else if (const std::optional<qint64> moment = ReadMoment(headers.retry_after))
    times.retry_after = WithinBounds(*moment - sent);
  return times;
}

}  // namespace borvane::mirror
