#include "feeds/summary_feed.h"

#include <optional>

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

constexpr qint64 made = 1'781'838'300'000;
constexpr qint64 day = 86'400'000;

/// A feature as the feeds have it, with `replaced` by `replacement`.
QByteArray FeedFeature(const QByteArray &replaced = "", const QByteArray &replacement = "") {
  QByteArray text =
      R"({"type":"Feature","properties":{"mag":1.48,"place":"14 km SW of Searles Valley, CA","time":1781838000000,)"
      R"("updated":1781838200000,"tz":null,"felt":null,"status":"automatic","tsunami":0,"net":"ci","code":"38592402",)"
      R"("ids":",us7000abcd,ci38592402,","types":",origin,","nst":null,"type":"earthquake"},)"
      R"("geometry":{"type":"Point","coordinates":[-117.5,35.6,11.21]},"id":"ci38592402"})";
  if (!replaced.isEmpty()) {
    EXPECT_EQ(text.count(replaced), 1) << replaced.constData();
    text.replace(replaced, replacement);
  }
  return text;
}

QByteArray FeedOf(const QByteArrayList &features, const QByteArray &metadata) {
  return R"({"type":"FeatureCollection","metadata":{)" + metadata + R"(},"features":[)" + features.join(',') +
         R"(],"bbox":[-180,-90,-10,180,90,700]})";
}

QByteArray FeedOf(const QByteArrayList &features) {
  return FeedOf(features, R"("generated":)" + QByteArray::number(made) + R"(,"title":"All","status":200,"count":)" +
                              QByteArray::number(features.size()));
}

std::optional<FeedEvent> ReadOneOf(const QByteArray &feature) {
  const FeedReading reading = ReadSummaryFeed(FeedOf({feature}), made);
  EXPECT_EQ(reading.fault, "");
  EXPECT_EQ(reading.events.size() + static_cast<std::size_t>(reading.left_out), 1U);
  return reading.events.empty() ? std::nullopt : std::optional(reading.events[0]);
}

std::string FaultOf(const QByteArray &text, qint64 now = made) {
  const FeedReading reading = ReadSummaryFeed(text, now);
  EXPECT_TRUE(reading.fault.isEmpty() || (reading.events.empty() && reading.generated == 0));
  return reading.fault.toStdString();
}

TEST(ReadSummaryFeed, TakesEveryFieldOfAnEvent) {
  const std::optional<FeedEvent> read = ReadOneOf(FeedFeature());
  ASSERT_TRUE(read);
  EXPECT_EQ(read->event.id, "ci38592402");
  EXPECT_EQ(read->event.origin_time, 1781838000000);
  EXPECT_EQ(read->event.latitude, 35.6);
  EXPECT_EQ(read->event.longitude, -117.5);
  EXPECT_EQ(read->event.depth, 11.21);
  EXPECT_EQ(read->event.magnitude, 1.48);
  EXPECT_EQ(read->event.place, "14 km SW of Searles Valley, CA");
  EXPECT_EQ(read->event.network, "ci");
  EXPECT_EQ(read->event.kind, "earthquake");
  EXPECT_EQ(read->updated, 1781838200000);
  EXPECT_EQ(read->ids, QStringList({"ci38592402", "us7000abcd"}));
  EXPECT_FALSE(read->deleted);
}

TEST(ReadSummaryFeed, TakesTheTimeAtWhichTheFeedWasMade) {
  EXPECT_EQ(ReadSummaryFeed(FeedOf({}), made).generated, made);
  EXPECT_EQ(ReadSummaryFeed(FeedOf({}), made + day).generated, made);
}

TEST(ReadSummaryFeed, TakesWhatTheRealFeedsHoldBesides) {
  EXPECT_EQ(ReadOneOf(FeedFeature("1.48", "null"))->event.magnitude, std::nullopt);
  EXPECT_EQ(ReadOneOf(FeedFeature("1.48", "-0.72"))->event.magnitude, -0.72);
  EXPECT_EQ(ReadOneOf(FeedFeature("11.21", "null"))->event.depth, std::nullopt);
  EXPECT_EQ(ReadOneOf(FeedFeature("11.21", "-3.1"))->event.depth, -3.1);
  EXPECT_EQ(ReadOneOf(FeedFeature(R"("14 km SW of Searles Valley, CA")", "null"))->event.place, "");
  EXPECT_EQ(ReadOneOf(FeedFeature("14 km SW of Searles Valley, CA", "\xC3\x96xarfj\xC3\xB6r\xC3\xB0ur"))->event.place,
            QString::fromUtf8("\xC3\x96xarfj\xC3\xB6r\xC3\xB0ur"));
  EXPECT_EQ(ReadOneOf(FeedFeature(R"("earthquake")", R"("quarry blast")"))->event.kind, "quarry blast");
  EXPECT_EQ(ReadOneOf(FeedFeature("-117.5", "-187.5"))->event.longitude, 172.5);
}

TEST(ReadSummaryFeed, LeavesOutAnEventWithoutAnEpicentre) {
  EXPECT_FALSE(ReadOneOf(FeedFeature("-117.5,35.6,11.21", "null,null,null")));
  EXPECT_FALSE(ReadOneOf(FeedFeature(R"({"type":"Point","coordinates":[-117.5,35.6,11.21]})", "null")));
}

TEST(ReadSummaryFeed, KeepsTheIdsOfWhatItLeavesOut) {
  const QByteArray without_epicentre = FeedFeature("-117.5,35.6,11.21", "null,null,null");
  const QByteArray without_own_id = FeedFeature(R"("id":"ci38592402")", R"("id":null)");
  const QByteArray nameless = QByteArray(without_own_id).replace(",us7000abcd,ci38592402,", ",<b>,");
  const FeedReading reading =
      ReadSummaryFeed(FeedOf({FeedFeature("\"ci38592402\"", "\"nc1\""), without_epicentre, nameless, "7"}), made);
  EXPECT_EQ(reading.events.size(), 1U);
  EXPECT_EQ(reading.left_out, 3);
  EXPECT_EQ(reading.unread_ids, QStringList({"ci38592402", "us7000abcd"}));
  EXPECT_EQ(reading.nameless, 2);
  EXPECT_EQ(ReadSummaryFeed(FeedOf({without_own_id}), made).unread_ids, QStringList({"us7000abcd", "ci38592402"}));
  EXPECT_EQ(ReadSummaryFeed(FeedOf({without_own_id}), made).nameless, 0);
}

TEST(ReadSummaryFeed, LeavesOutAnEventThatIsYetToCome) {
  EXPECT_FALSE(ReadOneOf(FeedFeature("1781838000000", QByteArray::number(made + day + 1))));
  EXPECT_TRUE(ReadOneOf(FeedFeature("1781838000000", QByteArray::number(made + day))));
}

TEST(ReadSummaryFeed, TakesNoRevisionThatCouldNotBeRevisedAgain) {
  EXPECT_EQ(ReadOneOf(FeedFeature("1781838200000", QByteArray::number(made + 1)))->updated, made);
  for (const char *nothing : {"null", "\"1781838200000\"", "1e300", "{}"})
    EXPECT_EQ(ReadOneOf(FeedFeature("1781838200000", nothing))->updated, 0) << nothing;
}

TEST(ReadSummaryFeed, TakesUsableIdsOnlyAndEachOnce) {
  EXPECT_EQ(ReadOneOf(FeedFeature(",us7000abcd,ci38592402,", ",,a/b,us1,ci38592402,us1,<b>,"))->ids,
            QStringList({"ci38592402", "us1"}));
  for (const char *nothing : {R"("ids":null)", R"("ids":7)", R"("ids":"")", R"("sides":"x")"})
    EXPECT_EQ(ReadOneOf(FeedFeature(R"("ids":",us7000abcd,ci38592402,")", nothing))->ids, QStringList("ci38592402"));
  QByteArray many;
  for (int i = 0; i < 1000; ++i)
    many += ",us" + QByteArray::number(i);
  EXPECT_EQ(ReadOneOf(FeedFeature(",us7000abcd,ci38592402,", many))->ids.size(), 32);
}

TEST(ReadSummaryFeed, TakesADeletedEventByItsIdAlone) {
  const std::optional<FeedEvent> read =
      ReadOneOf(FeedFeature("automatic", "deleted").replace("-117.5,35.6,11.21", "null,null,null"));
  ASSERT_TRUE(read);
  EXPECT_TRUE(read->deleted);
  EXPECT_EQ(read->event.id, "ci38592402");
  EXPECT_EQ(read->ids, QStringList({"ci38592402", "us7000abcd"}));
  EXPECT_FALSE(ReadOneOf(FeedFeature("automatic", "deleted").replace(R"("id":"ci38592402")", R"("id":null)")));
}

TEST(ReadSummaryFeed, RefusesAFeedOfAnotherDay) {
  const QByteArray feed = FeedOf({FeedFeature()});
  EXPECT_EQ(FaultOf(feed, made + day), "");
  EXPECT_EQ(FaultOf(feed, made - day), "");
  EXPECT_EQ(FaultOf(feed, made + day + 1), "made at 2026-06-19T03:05:00Z, more than a day from this computer's clock");
  EXPECT_NE(FaultOf(feed, made - day - 1), "");
  EXPECT_NE(FaultOf(feed, made - 365 * day), "");
}

TEST(ReadSummaryFeed, RefusesAFeedThatDoesNotSayWhenItWasMade) {
  for (const char *metadata : {"", R"("generated":null)", R"("generated":"1781838300000")", R"("generated":1e300)"})
    EXPECT_EQ(FaultOf(FeedOf({FeedFeature()}, metadata)), "it does not say when it was made") << metadata;
  EXPECT_EQ(FaultOf(R"({"type":"FeatureCollection","features":[]})"), "it does not say when it was made");
}

TEST(ReadSummaryFeed, RefusesAFeedWhoseMetadataContradictsIt) {
  const QByteArray start = R"("generated":)" + QByteArray::number(made);
  EXPECT_EQ(FaultOf(FeedOf({FeedFeature()}, start + R"(,"count":2)")), "it announces 2 events and has 1");
  EXPECT_EQ(FaultOf(FeedOf({FeedFeature()}, start + R"(,"count":1.5)")), "it announces 1.5 events and has 1");
  EXPECT_EQ(FaultOf(FeedOf({FeedFeature()}, start + R"(,"status":503)")), "its status is 503");
  EXPECT_EQ(FaultOf(FeedOf({FeedFeature()}, start + R"(,"count":null,"status":"x")")), "");
  EXPECT_EQ(FaultOf(FeedOf({FeedFeature()}, start)), "");
}

TEST(ReadSummaryFeed, SaysWhatIsWrongWithTheText) {
  EXPECT_TRUE(QString::fromStdString(FaultOf("<html>")).startsWith("not JSON"));
  EXPECT_TRUE(QString::fromStdString(FaultOf("")).startsWith("not JSON"));
  EXPECT_EQ(FaultOf("{}"), "not a GeoJSON feature collection");
  EXPECT_EQ(FaultOf(R"({"type":"Feature","features":[]})"), "not a GeoJSON feature collection");
}

TEST(ReadSummaryFeed, TakesNothingOfATextThatIsCutShort) {
  const QByteArray whole = FeedOf({FeedFeature(), FeedFeature("\"ci38592402\"", "\"ci1\"")});
  ASSERT_EQ(FaultOf(whole), "");
  for (qsizetype length = 0; length < whole.size(); ++length)
    EXPECT_NE(FaultOf(whole.first(length)), "") << length;
}

TEST(ReadSummaryFeed, RefusesMoreThanAnyFeedHas) {
  QByteArrayList features;
  for (int i = 0; i <= most_feed_events; ++i)
    features += R"({"id":"e)" + QByteArray::number(i) +
                R"(","properties":{"time":1781838000000},"geometry":{"coordinates":[1,2]}})";
  EXPECT_EQ(FaultOf(FeedOf(features)), "more than 50000 events");
  features.removeLast();
  EXPECT_EQ(ReadSummaryFeed(FeedOf(features), made).events.size(), static_cast<std::size_t>(most_feed_events));
}

TEST(ReadSummaryFeed, RefusesAFloodOfSmallValuesBeforeItIsRead) {
  for (const char *value : {"[],", "0,", "{},", "[[0]],", ","}) {
    const QByteArray flood = QByteArray(value).repeated(3'000'000).chopped(1);
    EXPECT_EQ(FaultOf(R"({"type":"FeatureCollection","features":[)" + flood + "]}"),
              "more values than a feed of 50000 events has")
        << value;
  }
}

}  // namespace
}  // namespace borvane::mirror
