#include "catalogue/geojson_reader.h"

#include <optional>

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace borvane::mirror
