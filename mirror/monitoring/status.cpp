#include "monitoring/status.h"

#include <QDateTime>
#include <algorithm>

namespace borvane::mirror {

namespace {

/// How old the data may be where another mirror asks. What a feed confirms without a change does not make them newer
/// there, so this is longer than any answer of a feed may live.
constexpr qint64 oldest_of_follower_ms = std::chrono::milliseconds(std::chrono::hours(48)).count();

/// How long the feed may go without an answer.
qint64 LongestSilenceMs(const FeedState &feed) {
  const std::chrono::seconds pause = std::max(feed.period, feed.lifetime);
  return std::chrono::milliseconds(std::max<std::chrono::seconds>(std::chrono::hours(1), 2 * pause)).count();
}

QString TimeText(qint64 time) {
  return QDateTime::fromMSecsSinceEpoch(time, Qt::UTC).toString("yyyy-MM-dd hh:mm:ss") + " UTC";
}

/// Within quotation marks.
QByteArray LabelText(const QString &text) {
  return text.toUtf8().replace('\\', "\\\\").replace('"', "\\\"").replace('\n', "\\n");
}

QByteArray SecondsText(qint64 milliseconds) {
  return QByteArray::number(static_cast<double>(milliseconds) / 1000, 'f', 3);
}

/// The head of a metric, in front of its values.
QByteArray MetricHead(const QByteArray &name, const QByteArray &type, const QByteArray &help) {
  return "# HELP " + name + ' ' + help + "\n# TYPE " + name + ' ' + type + '\n';
}

QByteArray Gauge(const QByteArray &name, const QByteArray &help, const QByteArray &value) {
  return MetricHead(name, "gauge", help) + name + ' ' + value + '\n';
}

/// A metric with a value for each feed.
template <class Value>
QByteArray OfEachFeed(const std::vector<FeedState> &feeds, const QByteArray &name, const QByteArray &type,
                      const QByteArray &help, const Value &value) {
  QByteArray text = feeds.empty() ? QByteArray() : MetricHead(name, type, help);
  for (std::size_t i = 0; i < feeds.size(); ++i)
    text += name + "{feed=\"" + QByteArray::number(qulonglong{i + 1}) + "\",url=\"" + LabelText(feeds[i].url) + "\"} " +
            value(feeds[i]) + '\n';
  return text;
}

QByteArray TrafficText(const Traffic &traffic) {
  QByteArray text = MetricHead("borvane_answers_total", "counter", "Answers sent, by their status.");
  for (const auto &[status, count] : traffic.answers)
    text += "borvane_answers_total{status=\"" + QByteArray::number(status) + "\"} " + QByteArray::number(count) + '\n';
  return text;
}

QByteArray StoresText(const Status &status) {
  QByteArray text = MetricHead("borvane_store_works", "gauge", "Whether a store did what it was asked for last.");
  text += QByteArray("borvane_store_works{store=\"service\"} ") + (status.service_store_works ? '1' : '0') + '\n';
  if (!status.is_live)
    return text;
  text += QByteArray("borvane_store_works{store=\"events\"} ") + (status.event_store_works ? '1' : '0') + '\n';
  return text + Gauge("borvane_unwritten_events", "Events that wait for the store.",
                      QByteArray::number(qulonglong{status.unwritten_events}));
}

/// What is wrong where another mirror asks. That one knows the state of the feeds.
QStringList FaultsOfFollower(const Status &status) {
  if (status.data_time == 0)
    return {"No feed has answered yet."};
  if (status.now - status.data_time > oldest_of_follower_ms)
    return {"The newest data were made at " + TimeText(status.data_time) + '.'};
  return {};
}

QStringList FaultsOfFeeds(const Status &status) {
  if (status.asking_since == 0)
    return FaultsOfFollower(status);
  const auto has_answered = [](const FeedState &feed) { return feed.last_success != 0; };
  if (status.data_time == 0 && std::none_of(status.feeds.begin(), status.feeds.end(), has_answered))
    return {"No feed has answered yet."};
  QStringList faults;
  for (const FeedState &feed : status.feeds) {
    const qint64 since = std::max(feed.last_success, status.asking_since);
    if (status.now - since <= LongestSilenceMs(feed))
      continue;
    // Whether it answered an earlier run or another mirror is not known here.
    const QString beginning = feed.last_success < status.asking_since ? "this mirror began to ask for it at " : "";
    faults.append("The feed " + feed.url + " has not answered since " + beginning + TimeText(since) + '.');
  }
  return faults;
}

}  // namespace

QStringList FaultsOf(const Status &status) {
  QStringList faults;
  if (!status.service_store_works)
    faults.append("The service's store does not work.");
  if (!status.is_live)
    return faults;
  if (!status.event_store_works)
    faults.append("The events' store does not work.");
  return faults + FaultsOfFeeds(status);
}

QByteArray MetricsText(const Status &status) {
  QByteArray text = MetricHead("borvane_build_info", "gauge", "The version of the program.");
  text += "borvane_build_info{version=\"" BORVANE_VERSION "\"} 1\n";
  text += TrafficText(status.traffic);
  text += Gauge("borvane_connections", "Open connections.", QByteArray::number(status.connections));
  text += Gauge("borvane_events", "Events that are served.", QByteArray::number(qulonglong{status.events}));
  text += StoresText(status);
  if (!status.is_live)
    return text;
  text += Gauge("borvane_data_timestamp_seconds", "When the newest data were made, 0 for none.",
                SecondsText(status.data_time));
  text += Gauge("borvane_asks_feeds", "Whether this mirror asks the feeds, and not another one for all.",
                status.asking_since == 0 ? "0" : "1");
  if (status.asking_since == 0)
    return text;
  text += OfEachFeed(status.feeds, "borvane_feed_last_success_timestamp_seconds", "gauge",
                     "When the feed last answered, 0 for never.",
                     [](const FeedState &feed) { return SecondsText(feed.last_success); });
  text += OfEachFeed(status.feeds, "borvane_feed_failures_total", "counter", "Requests of the feed that failed.",
                     [](const FeedState &feed) { return QByteArray::number(feed.failures); });
  return text;
}

}  // namespace borvane::mirror
