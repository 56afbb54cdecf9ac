#include "catalogue/feature_collection.h"

#include <QByteArrayList>
#include <string>
#include <vector>

#include <gtest/gtest.h>

// What is JSON, whatever is in it: a text is read whole or not at all.

namespace borvane::mirror {
namespace {

using namespace std::string_literals;

QByteArray CollectionOf(const QByteArray &features) {
  return R"({"type":"FeatureCollection","features":[)" + features + "]}";
}

/// A feature with that text for its time.
QByteArray WithTime(const QByteArray &time) { return R"({"properties":{"time":)" + time + "}}"; }

/// A feature with that text between the quotes of its place.
QByteArray WithPlace(const QByteArray &place) { return R"({"properties":{"place":")" + place + "\"}}"; }

/// A text with its features.
struct ReadCollection {
  explicit ReadCollection(const QByteArray &text) : collection(text) {
    collection.ForEach([this](const Feature &feature) { features.push_back(feature); });
    EXPECT_EQ(collection.size(), std::ssize(features));
  }

  const FeatureCollection collection;
  std::vector<Feature> features;
};

std::string FaultIn(const QByteArray &text) {
  const ReadCollection read(text);
  EXPECT_TRUE(read.collection.fault().isEmpty() || read.features.empty());
  return read.collection.fault().toStdString();
}

bool IsJson(const QByteArray &text) {
  return !QByteArray::fromStdString(FaultIn(text)).startsWith("not JSON that can be read: ");
}

/// The time of a collection's only feature.
std::optional<double> TimeIn(const QByteArray &feature) {
  const ReadCollection read(CollectionOf(feature));
  EXPECT_EQ(read.collection.fault(), "");
  return read.features.at(0).time;
}

/// The place of a collection's only feature.
std::string PlaceIn(const QByteArray &feature) {
  const ReadCollection read(CollectionOf(feature));
  EXPECT_EQ(read.collection.fault(), "");
  return std::string(read.features.at(0).place);
}

TEST(FeatureCollection, HasEveryFieldOfAFeature) {
  const ReadCollection read(CollectionOf(
      R"({"id":"a","geometry":{"coordinates":[1,2.5,3,4]},"properties":{"mag":4,"place":"b","time":5,"updated":6,)"
      R"("status":"c","net":"d","ids":"e","type":"f"}})"));
  ASSERT_EQ(read.features.size(), 1U);
  const Feature &feature = read.features[0];
  EXPECT_EQ(feature.id, "a");
  EXPECT_EQ(feature.longitude, 1);
  EXPECT_EQ(feature.latitude, 2.5);
  EXPECT_EQ(feature.depth, 3);
  EXPECT_EQ(feature.magnitude, 4);
  EXPECT_EQ(feature.place, "b");
  EXPECT_EQ(feature.time, 5);
  EXPECT_EQ(feature.updated, 6);
  EXPECT_EQ(feature.status, "c");
  EXPECT_EQ(feature.network, "d");
  EXPECT_EQ(feature.ids, "e");
  EXPECT_EQ(feature.kind, "f");
}

TEST(FeatureCollection, HasNothingOfWhatIsOfAWrongKind) {
  const ReadCollection read(CollectionOf(
      R"(7,null,"x",[1],{},{"id":7,"geometry":[1],"properties":[2]},{"geometry":{"coordinates":{"0":1}}},)"
      R"({"geometry":{"coordinates":[null,"2",[3]]},"properties":{"mag":"4","place":5,"time":true,"updated":{}}})"));
  EXPECT_EQ(read.features.size(), 8U);
  for (const Feature &feature : read.features) {
    EXPECT_EQ(feature.id, "");
    EXPECT_FALSE(feature.longitude || feature.latitude || feature.depth);
    EXPECT_FALSE(feature.magnitude || feature.time || feature.updated);
    EXPECT_EQ(feature.place, "");
  }
}

TEST(FeatureCollection, HasItsMetadataWhereverTheyAre) {
  const QByteArray metadata = R"("metadata":{"count":1,"generated":2,"status":3},)";
  QByteArray text = CollectionOf("7");
  EXPECT_EQ(FeatureCollection(text).metadata().count, std::nullopt);
  text.insert(1, metadata);
  EXPECT_EQ(FeatureCollection(text).metadata().count, 1);
  EXPECT_EQ(FeatureCollection(text).metadata().generated, 2);
  EXPECT_EQ(FeatureCollection(text).metadata().status, 3);
  EXPECT_EQ(FeatureCollection(CollectionOf("7").chopped(1) + ',' + metadata.chopped(1) + '}').metadata().count, 1);
  for (const char *nothing : {"7", "[]", "null", R"({"count":"1"})"})
    EXPECT_EQ(FeatureCollection(R"({"type":"FeatureCollection","features":[],"metadata":)" + QByteArray(nothing) + '}')
                  .metadata()
                  .count,
              std::nullopt);
}

TEST(FeatureCollection, HasTheLastOfSeveralMembersOfOneName) {
  EXPECT_EQ(TimeIn(R"({"properties":{"time":1,"time":2}})"), 2);
  EXPECT_EQ(TimeIn(R"({"properties":{"time":1,"time":null}})"), std::nullopt);
  EXPECT_EQ(TimeIn(R"({"properties":{"time":1},"properties":{"time":2}})"), 2);
  EXPECT_EQ(TimeIn(R"({"properties":{"time":1},"properties":{}})"), std::nullopt);
  const ReadCollection read(
      R"({"type":"x","type":"FeatureCollection","features":7,"features":[1,2],"metadata":{"count":1},"metadata":0})");
  EXPECT_EQ(read.features.size(), 2U);
  EXPECT_EQ(read.collection.metadata().count, std::nullopt);
  const ReadCollection points(
      CollectionOf(R"({"geometry":{"coordinates":[1,2,3],"coordinates":[4]},"id":"a","id":"b"})"));
  EXPECT_EQ(points.features.at(0).longitude, 4);
  EXPECT_EQ(points.features.at(0).latitude, std::nullopt);
  EXPECT_EQ(points.features.at(0).id, "b");
}

TEST(FeatureCollection, TakesANumberInAnyOfItsForms) {
  EXPECT_EQ(TimeIn(WithTime("1781838000000")), 1781838000000);
  EXPECT_EQ(TimeIn(WithTime("1781838000000.0")), 1781838000000);
  EXPECT_EQ(TimeIn(WithTime("1.781838E+12")), 1781838000000);
  EXPECT_EQ(TimeIn(WithTime("-0")), 0);
  EXPECT_EQ(TimeIn(WithTime("-0.0")), 0);
  EXPECT_EQ(TimeIn(WithTime("9007199254740993")), 9007199254740992);
  EXPECT_EQ(TimeIn(WithTime("-9223372036854775808")), -0x1p63);
  EXPECT_EQ(TimeIn(WithTime("18446744073709551615")), 0x1p64);
  EXPECT_EQ(TimeIn(WithTime("1e308")), 1e308);
  EXPECT_EQ(TimeIn(WithTime("1e-400")), 0);
}

TEST(FeatureCollection, RefusesANumberThatNoDoubleCanHold) {
  for (const char *number : {"1e309", "-1e400", "1e99999999999", "18446744073709551616", "-9223372036854775809"})
    EXPECT_FALSE(IsJson(CollectionOf(WithTime(number)))) << number;
  for (const char *number : {"01", "+1", ".5", "1.", "0x1", "NaN", "Infinity", "-", "1e", "--1"})
    EXPECT_FALSE(IsJson(CollectionOf(WithTime(number)))) << number;
}

TEST(FeatureCollection, ReadsWhatIsEscaped) {
  EXPECT_EQ(PlaceIn(WithPlace(R"(\"\\\/\t\u00d6)")), "\"\\/\t\xC3\x96");
  EXPECT_EQ(PlaceIn(WithPlace(R"(\ud83c\udf0b)")), "\xF0\x9F\x8C\x8B");
  EXPECT_EQ(PlaceIn(WithPlace(R"(a\u0000b)")), "a\0b"s);
  EXPECT_EQ(TimeIn(R"({"propertie\u0073":{"\u0074ime":7}})"), 7);
}

TEST(FeatureCollection, RefusesWhatNoTextCanHave) {
  for (const char *place : {R"(\x)", R"(\u12g4)", R"(\u12)", R"(\ud83c)", R"(\ud83cx)", R"(\udf0b)", R"(\ud83c\u0041)"})
    EXPECT_FALSE(IsJson(CollectionOf(WithPlace(place)))) << place;
  for (const char *place : {"a\nb", "a\tb", "\x01"})
    EXPECT_FALSE(IsJson(CollectionOf(WithPlace(place)))) << place;
  EXPECT_FALSE(IsJson(CollectionOf(WithPlace(QByteArray("a\0b", 3)))));
}

TEST(FeatureCollection, RefusesATextThatIsNotUtf8WhereverThatIs) {
  for (const char *bytes : {"\x80", "\xC3", "\xC3(", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"}) {
    EXPECT_FALSE(IsJson(CollectionOf(WithPlace(bytes)))) << QByteArray(bytes).toHex().constData();
    EXPECT_FALSE(IsJson(CollectionOf(R"({"unread":")" + QByteArray(bytes) + "\"}")));
  }
  EXPECT_EQ(PlaceIn(WithPlace("\xC3\x96xarfj\xC3\xB6r\xC3\xB0ur")), "\xC3\x96xarfj\xC3\xB6r\xC3\xB0ur");
}

TEST(FeatureCollection, MayBeginWithAByteOrderMark) {
  EXPECT_EQ(FaultIn("\xEF\xBB\xBF" + CollectionOf("7")), "");
  EXPECT_FALSE(IsJson("\xEF\xBB\xBF\xEF\xBB\xBF" + CollectionOf("7")));
  EXPECT_FALSE(IsJson("\xEF\xBB\xBF"));
  EXPECT_FALSE(IsJson("\xEF\xBB" + CollectionOf("7")));
}

TEST(FeatureCollection, IsNothingButOneValue) {
  EXPECT_EQ(FaultIn("\t\r\n " + CollectionOf("7") + " \r\n\t"), "");
  for (const char *garbage : {"x", "{}", ",", "]", "}", "1", "\"\""})
    EXPECT_FALSE(IsJson(CollectionOf("7") + garbage)) << garbage;
  EXPECT_FALSE(IsJson(CollectionOf("7") + '\0'));
  for (const char *nothing : {"", " ", "\n"})
    EXPECT_FALSE(IsJson(nothing)) << nothing;
}

TEST(FeatureCollection, RefusesWhatIsAlmostJson) {
  for (const char *text : {"{", "[", "\"", "{'a':1}", "{a:1}", "[1,]", "[,]", "[1 2]", R"({"a":})", R"({"a"})",
                           R"({"a":1,})", R"({"a":1 "b":2})", "[}", "{]", "tru", "nul", "True", "/**/{}", "[1]]"})
    EXPECT_FALSE(IsJson(text)) << text;
}

TEST(FeatureCollection, RefusesAValueWithoutFeatures) {
  for (const char *text : {"7", "-1.5", "true", "null", "\"x\"", "[]", "{}", R"({"type":"FeatureCollection"})",
                           R"({"type":["FeatureCollection"],"features":[]})", R"({"features":[]})"})
    EXPECT_EQ(FaultIn(text), "not a GeoJSON feature collection") << text;
}

TEST(FeatureCollection, MayBeDeepButNotWithoutEnd) {
  const auto deep = [](qsizetype depth) {
    return CollectionOf(R"({"unread":)" + QByteArray(depth, '[') + QByteArray(depth, ']') + '}');
  };
  EXPECT_EQ(FaultIn(deep(1'000)), "");
  EXPECT_FALSE(IsJson(deep(1'100)));
  EXPECT_FALSE(IsJson(deep(1'000'000)));
  EXPECT_FALSE(IsJson(QByteArray(1'000'000, '[')));
  EXPECT_FALSE(IsJson(QByteArray(R"({"a":)").repeated(100'000)));
}

TEST(FeatureCollection, ReadsTheSameWhereverTheTextEndsInItsMemory) {
  // The reader looks at many bytes at a time, and must not see those after the end.
  const QByteArray text = CollectionOf(WithTime("12"));
  for (qsizetype blanks = 0; blanks < 130; ++blanks) {
    const QByteArray within = QByteArray(blanks, ' ') + text;
    const QByteArray longer = within + "3]}}\"\\";
    const ReadCollection read(QByteArray::fromRawData(longer.constData(), within.size()));
    EXPECT_EQ(read.collection.fault(), "") << blanks;
    EXPECT_EQ(read.features.at(0).time, 12) << blanks;
    EXPECT_FALSE(IsJson(QByteArray::fromRawData(longer.constData(), within.size() - 1))) << blanks;
  }
}

}  // namespace
}  // namespace borvane::mirror
