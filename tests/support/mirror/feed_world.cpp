#include "support/mirror/feed_world.h"

#include <QDateTime>
#include <QLocale>
#include <algorithm>
#include <tuple>

namespace borvane::mirror {

namespace {

constexpr std::size_t most_of_a_recent_feed = 200;
constexpr std::size_t most_of_the_centre = 50;
constexpr qint64 memory_of_the_world = 7 * one_day;
constexpr qsizetype typical_length = 400;  // of an event in GeoJSON

/// The number so that the same one is read again.
QByteArray NumberText(const std::optional<double> &number) {
  return number ? QByteArray::number(*number, 'g', QLocale::FloatingPointShortest) : "null";
}

/// An event in GeoJSON, with some of the properties of which nothing is made.
QByteArray FeatureText(const FeedEvent &given) {
  const Event &event = given.event;
  const QByteArray id = event.id.toUtf8();
  return R"({"type":"Feature","properties":{"mag":)" + NumberText(event.magnitude) + R"(,"place":")" +
         event.place.toUtf8() + R"(","time":)" + QByteArray::number(event.origin_time) + R"(,"updated":)" +
         QByteArray::number(given.updated) + R"(,"tz":null,"status":")" + (given.deleted ? "deleted" : "automatic") +
         R"(","net":")" + event.network.toUtf8() + R"(","ids":",)" + given.ids.join(',').toUtf8() +
         R"(,","nst":15,"type":")" + event.kind.toUtf8() + R"("},"geometry":{"type":"Point","coordinates":[)" +
         NumberText(event.longitude) + ',' + NumberText(event.latitude) + ',' + NumberText(event.depth) +
         R"(]},"id":")" + id + "\"}";
}

QByteArray LineText(const Event &event) {
  return event.id.toUtf8() + '|' +
         QDateTime::fromMSecsSinceEpoch(event.origin_time, Qt::UTC).toString(Qt::ISODateWithMs).toUtf8() + '|' +
         NumberText(event.latitude) + '|' + NumberText(event.longitude) + '|' + NumberText(event.depth) + "|author|" +
         "catalogue|" + event.network.toUtf8() + "|7|mb|" + NumberText(event.magnitude) + "|author|" +
         event.place.toUtf8() + '\n';
}

/// A feed of these features, of which there are `count`.
QByteArray FeedText(qint64 made, std::size_t count, const QByteArray &features) {
  return R"({"type":"FeatureCollection","metadata":{"generated":)" + QByteArray::number(made) +
         R"(,"title":"All Earthquakes","status":200,"api":"1.10.3","count":)" +
         QByteArray::number(static_cast<qulonglong>(count)) + R"(},"features":[)" +
         features.chopped(count > 0 ? 1 : 0) + R"(],"bbox":[-180,-90,-10,180,90,700]})";
}

}  // namespace

void FeedWorld::PassMinute(qint64 now) {
  if (OneIn(4))
    Happen(now);
  // Most revisions come within the first hour, some days later.
  for (std::size_t i = survey_.size(); i > 0 && survey_[i - 1].said.event.origin_time > now - one_hour; --i)
    if (OneIn(20))
      Revise(survey_[i - 1], now);
  if (!survey_.empty() && OneIn(2))
    Revise(survey_[Place()], now);
  if (survey_.size() > 10 && OneIn(60))
    TakeBack(now);
  Forget(now);
}

void FeedWorld::Happen(qint64 now) {
  Happened happened;
  happened.number = ++count_;
  happened.first_magnitude = Number(0, 60);
  happened.said = GivenAt(QString("ci%1").arg(count_), now - Number(1, 55'000));
  happened.said.updated = now;
  Event &event = happened.said.event;
  event.latitude = Number(-80'000, 80'000) / 1000.0;
  // Of two events that follow each other each is far from the other, so that nobody can take them for one.
  event.longitude = count_ * 47 % 360 - 180 + Number(0, 999) / 1000.0;
  event.magnitude = happened.first_magnitude / 10.0;
  event.depth = Number(-20, 6000) / 10.0;
  event.place = OneIn(9) ? QString::fromUtf8("\xC3\x96xarfj\xC3\xB6r\xC3\xB0ur")
                         : QString("%1 km N of Sometown").arg(Number(1, 300));
  if (OneIn(30))
    event.kind = "quarry blast";
  if (OneIn(6))
    Report(happened);
  if (OneIn(20))
    event.depth.reset();
  if (OneIn(20))
    event.magnitude.reset();
  happened.text = FeatureText(happened.said);
  survey_.push_back(happened);
}

/// The centre has its own measurements of the event.
void FeedWorld::Report(const Happened &happened) {
  Reported report;
  report.number = happened.number;
  report.is_its_own = OneIn(3);
  report.event = happened.said.event;
  report.event.id = QString("gfz%1").arg(happened.number);
  report.event.origin_time -= Number(0, 25'000);
  report.event.latitude += report.is_its_own ? 5 : 0.3;
  report.event.network = "GFZ";
  report.event.kind = "earthquake";
  report.event.credit = TwoSources()[1].credit;
  report.line = LineText(report.event);
  centre_.push_back(report);
}

void FeedWorld::Revise(Happened &happened, qint64 now) {
  FeedEvent &said = happened.said;
  said.updated = now;
  said.event.magnitude = (happened.first_magnitude + Number(-5, 5)) / 10.0;
  said.event.latitude += 0.001;
  if (OneIn(15)) {
    // The other network's solution is preferred now.
    const QString network = said.event.network == "ci" ? "us" : "ci";
    said.event.network = network;
    said.event.id = network + said.event.id.mid(2);
    said.ids.removeAll(said.event.id);
    said.ids.prepend(said.event.id);
  }
  happened.text = FeatureText(said);
}

/// Takes an event back. Of one half the feed of new events says so for a while, the other half only disappears.
void FeedWorld::TakeBack(qint64 now) {
  const auto happened = survey_.begin() + static_cast<std::ptrdiff_t>(Place());
  if (OneIn(2)) {
    happened->said.deleted = true;
    withdrawn_.push_back({.text = FeatureText(happened->said), .until = now + 10 * one_minute});
  }
  for (Reported &report : centre_)
    if (report.number == happened->number)
      report.is_its_own = true;
  survey_.erase(happened);
}

void FeedWorld::Forget(qint64 now) {
  while (!withdrawn_.empty() && withdrawn_.front().until < now)
    withdrawn_.pop_front();
  while (!survey_.empty() && survey_.front().said.event.origin_time < now - memory_of_the_world)
    survey_.pop_front();
  while (!centre_.empty() && centre_.front().event.origin_time < now - memory_of_the_world)
    centre_.pop_front();
}

QByteArray FeedWorld::NewestEvents(qint64 now) const {
  const std::size_t count = std::min(survey_.size(), most_of_a_recent_feed);
  QByteArray features;
  features.reserve(static_cast<qsizetype>(count + withdrawn_.size()) * typical_length);
  for (std::size_t i = 1; i <= count; ++i)
    features.append(survey_[survey_.size() - i].text).append(',');
  for (const Withdrawn &withdrawn : withdrawn_)
    features.append(withdrawn.text).append(',');
  return FeedText(now, count + withdrawn_.size(), features);
}

QByteArray FeedWorld::WholeWeekOfEvents(qint64 now) const {
  QByteArray features;
  features.reserve(static_cast<qsizetype>(survey_.size()) * typical_length);
  for (const Happened &happened : survey_)
    features.append(happened.text).append(',');
  return FeedText(now, survey_.size(), features);
}

QByteArray FeedWorld::EventsOfTheCentre() const {
  QByteArray lines =
      "#EventID|Time|Latitude|Longitude|Depth/km|Author|Catalog|Contributor|ContributorID|MagType|Magnitude|"
      "MagAuthor|EventLocationName\n";
  for (std::size_t i = 1; i <= std::min(centre_.size(), most_of_the_centre); ++i)
    lines += centre_[centre_.size() - i].line;
  return lines;
}

std::vector<Event> FeedWorld::EventsSince(qint64 time) const {
  std::vector<Event> events;
  for (const Happened &happened : survey_) {
    events.push_back(happened.said.event);
    events.back().updated = happened.said.updated;
    events.back().credit = TwoSources()[0].credit;
    events.back().is_listed = happened.said.event.kind == "earthquake";
  }
  for (const Reported &report : centre_)
    if (report.is_its_own)
      events.push_back(report.event);
  std::erase_if(events, [time](const Event &event) { return event.origin_time < time; });
  std::sort(events.begin(), events.end(), [](const Event &a, const Event &b) {
    return std::tie(a.origin_time, a.id) > std::tie(b.origin_time, b.id);
  });
  return events;
}

}  // namespace borvane::mirror
