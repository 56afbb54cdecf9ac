#include "catalogue/catalogue.h"

#include <QDateTime>

#include <gtest/gtest.h>

#include "catalogue/geojson_reader.h"
#include "catalogue/sample.h"

namespace borvane::mirror {
namespace {

/// A feature with the fields that an event needs; `replaced` by `replacement`.
QByteArray Feature(const QByteArray &replaced = "", const QByteArray &replacement = "") {
  QByteArray text =
      R"({"type":"Feature","properties":{"mag":1.48,"place":"14km SW of Searles Valley, CA","time":1594870627920,)"
      R"("net":"ci","type":"earthquake"},"geometry":{"type":"Point","coordinates":[-117.5,35.6,11.21]},"id":"ci38592402"})";
  if (!replaced.isEmpty()) {
    EXPECT_TRUE(text.contains(replaced)) << replaced.constData();
    text.replace(replaced, replacement);
  }
  return text;
}

QByteArray Collection(const QByteArray &features) {
  return R"({"type":"FeatureCollection","features":[)" + features + "]}";
}

std::optional<Event> ReadOne(const QByteArray &feature) {
  const CatalogueReading reading = ReadGeoJson(Collection(feature));
  EXPECT_EQ(reading.fault, "");
  EXPECT_EQ(reading.events.size() + static_cast<std::size_t>(reading.left_out), 1U);
  return reading.events.empty() ? std::nullopt : std::optional(reading.events[0]);
}

TEST(ReadGeoJson, TakesEveryFieldOfAnEvent) {
  const std::optional<Event> event = ReadOne(Feature());
  ASSERT_TRUE(event);
  EXPECT_EQ(event->id, "ci38592402");
  EXPECT_EQ(event->origin_time, 1594870627920);
  EXPECT_EQ(event->latitude, 35.6);
  EXPECT_EQ(event->longitude, -117.5);
  EXPECT_EQ(event->depth, 11.21);
  EXPECT_EQ(event->magnitude, 1.48);
  EXPECT_EQ(event->place, "14km SW of Searles Valley, CA");
  EXPECT_EQ(event->network, "ci");
  EXPECT_EQ(event->kind, "earthquake");
}

TEST(ReadGeoJson, TakesAnEventWithoutTheFieldsThatItCanDoWithout) {
  for (const char *nothing : {"null", "\"x\"", "{}"})
    EXPECT_EQ(ReadOne(Feature("1.48", nothing))->magnitude, std::nullopt) << nothing;
  EXPECT_EQ(ReadOne(Feature("1.48", "1000"))->magnitude, std::nullopt);
  EXPECT_EQ(ReadOne(Feature("1.48", "-1000"))->magnitude, std::nullopt);
  EXPECT_EQ(ReadOne(Feature("11.21", "null"))->depth, std::nullopt);
  EXPECT_EQ(ReadOne(Feature(",11.21", ""))->depth, std::nullopt);
  EXPECT_EQ(ReadOne(Feature("11.21", "7000"))->depth, std::nullopt);
  EXPECT_EQ(ReadOne(Feature("11.21", "-101"))->depth, std::nullopt);
  EXPECT_EQ(ReadOne(Feature(R"("14km SW of Searles Valley, CA")", "null"))->place, "");
  EXPECT_EQ(ReadOne(Feature(R"("net":"ci",)", ""))->network, "");
  EXPECT_EQ(ReadOne(Feature(R"("earthquake")", "7"))->kind, "");
}

TEST(IsEventId, TakesLettersDigitsAndThreeSigns) {
  const QString good = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-";
  for (char16_t character = 0; character < 0x180; ++character)
    EXPECT_EQ(IsEventId(QString(QChar(character))), good.contains(QChar(character))) << int{character};
}

TEST(ReadGeoJson, LeavesOutWhatIsNoEvent) {
  EXPECT_FALSE(ReadOne(Feature(R"("id":"ci38592402")", R"("id":null)")));
  EXPECT_FALSE(ReadOne(Feature("ci38592402", "")));
  EXPECT_FALSE(ReadOne(Feature("ci38592402", "a/b")));
  EXPECT_FALSE(ReadOne(Feature("ci38592402", "a\\\"b")));
  EXPECT_FALSE(ReadOne(Feature("ci38592402", QByteArray(65, 'a'))));
  EXPECT_FALSE(ReadOne(Feature("1594870627920", "null")));
  EXPECT_FALSE(ReadOne(Feature("1594870627920", "\"1594870627920\"")));
  EXPECT_FALSE(ReadOne(Feature("1594870627920", "1e18")));
  EXPECT_FALSE(ReadOne(Feature("1594870627920", "-1e18")));
  EXPECT_FALSE(ReadOne(Feature("35.6", "90.01")));
  EXPECT_FALSE(ReadOne(Feature("35.6", "null")));
  EXPECT_FALSE(ReadOne(Feature("-117.5", "361")));
  EXPECT_FALSE(ReadOne(Feature("-117.5,35.6,11.21", "")));
  EXPECT_FALSE(ReadOne("null"));
  EXPECT_FALSE(ReadOne("[]"));
  EXPECT_FALSE(ReadOne("{}"));
}

TEST(ReadGeoJson, CountsWhatItLeavesOutAndTakesTheRest) {
  const CatalogueReading reading = ReadGeoJson(Collection("null," + Feature() + ",17"));
  EXPECT_EQ(reading.events.size(), 1U);
  EXPECT_EQ(reading.left_out, 2);
}

TEST(ReadGeoJson, BringsLongitudesBackBetweenTheDateLines) {
  EXPECT_EQ(ReadOne(Feature("-117.5", "-187.5"))->longitude, 172.5);
  EXPECT_EQ(ReadOne(Feature("-117.5", "190"))->longitude, -170);
  EXPECT_EQ(ReadOne(Feature("-117.5", "180"))->longitude, 180);
}

TEST(ReadGeoJson, TakesACollectionWithoutFeatures) {
  const CatalogueReading reading = ReadGeoJson(Collection(""));
  EXPECT_EQ(reading.fault, "");
  EXPECT_TRUE(reading.events.empty());
}

TEST(ReadGeoJson, SaysWhatIsWrongWithTheText) {
  EXPECT_TRUE(ReadGeoJson("").fault.startsWith("not JSON")) << ReadGeoJson("").fault.toStdString();
  EXPECT_TRUE(ReadGeoJson("<html>").fault.startsWith("not JSON"));
  EXPECT_TRUE(ReadGeoJson(Collection(Feature()).chopped(1)).fault.startsWith("not JSON"));
  EXPECT_TRUE(ReadGeoJson(QByteArray(1'000'000, '[')).fault.startsWith("not JSON"));
  for (const char *text : {"[]", "{}", R"({"type":"FeatureCollection"})",
                           R"({"type":"FeatureCollection","features":{}})", R"({"type":"Feature","features":[]})"})
    EXPECT_EQ(ReadGeoJson(text).fault, "not a GeoJSON feature collection") << text;
}

TEST(ReadGeoJson, TakesNothingOfATextThatIsCutShort) {
  const QByteArray whole = Collection(Feature() + ',' + Feature());
  for (qsizetype length = 0; length < whole.size(); ++length) {
    const CatalogueReading reading = ReadGeoJson(whole.first(length));
    EXPECT_FALSE(reading.fault.isEmpty()) << length;
    EXPECT_TRUE(reading.events.empty()) << length;
  }
}

TEST(Catalogue, HasTheNewestEventFirstAndEachIdOnce) {
  const auto event_of = [](const char *id, qint64 time) {
    Event event;
    event.id = id;
    event.origin_time = time;
    return event;
  };
  const Catalogue catalogue({event_of("a", 1), event_of("b", 3), event_of("a", 5), event_of("c", 2), event_of("d", 3)});
  std::vector<QString> ids;
  for (const Event &each : catalogue.events())
    ids.push_back(each.id);
  EXPECT_EQ(ids, (std::vector<QString>{"b", "d", "c", "a"}));
  EXPECT_EQ(catalogue.Find("a")->origin_time, 1);
  EXPECT_EQ(catalogue.Find("x"), nullptr);
}

TEST(Sample, HoldsRealEventsOfOneMonth) {
  const std::vector<Event> events = SampleEvents();
  EXPECT_GE(events.size(), 600U);
  EXPECT_LE(events.size(), 2000U);
  for (const Event &event : events) {
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(event.origin_time, Qt::UTC);
    EXPECT_GE(time, QDateTime::fromString("2025-04-15T00:00:00Z", Qt::ISODate));
    EXPECT_LE(time, QDateTime::fromString("2025-05-16T00:00:00Z", Qt::ISODate));
    EXPECT_TRUE(event.magnitude && event.depth && !event.place.isEmpty() && !event.network.isEmpty())
        << event.id.toStdString();
  }
  EXPECT_EQ(Catalogue(events).events().size(), events.size());
}

TEST(Sample, IsATableWithOneRowPerEvent) {
  const std::vector<Event> events = ReadEventTable(
      "id,time,latitude,longitude,depth,magnitude,place,network\n"
      "us1,2025-05-15T00:50:51Z,-7.1,126.1,479.1,5.9,\"148 km N of Manatutu, Timor Leste\",us\n"
      "us2,2025-05-15T00:50:52Z,-7.2,126.2,,,Fiji region,us\n"
      "bad line\n"
      "us3,yesterday,1,2,3,4,x,us\n");
  ASSERT_EQ(events.size(), 2U);
  EXPECT_EQ(events[0].id, "us1");
  EXPECT_EQ(events[0].origin_time, 1747270251000);
  EXPECT_EQ(events[0].place, "148 km N of Manatutu, Timor Leste");
  EXPECT_EQ(events[0].latitude, -7.1);
  EXPECT_EQ(events[0].longitude, 126.1);
  EXPECT_EQ(events[0].depth, 479.1);
  EXPECT_EQ(events[0].magnitude, 5.9);
  EXPECT_EQ(events[0].network, "us");
  EXPECT_EQ(events[0].kind, "earthquake");
  EXPECT_EQ(events[1].magnitude, std::nullopt);
  EXPECT_EQ(events[1].depth, std::nullopt);
}

}  // namespace
}  // namespace borvane::mirror
