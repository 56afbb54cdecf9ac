#include "pages/quakes_page.h"

#include <gtest/gtest.h>

#include "pages/text.h"
#include "support/mirror/time_zone.h"
#include "support/plain_scanners.h"

namespace borvane::mirror {
namespace {

Event Yucaipa() {
  return {.id = "ci14155392",
          .origin_time = 1118932584000,
          .latitude = 34.049,
          .longitude = -116.990,
          .depth = 11.6,
          .magnitude = 1.6,
          .place = "6km ENE of Yucaipa, CA",
          .network = "ci",
          .kind = "earthquake"};
}

QByteArray PageOf(std::vector<Event> events) {
  const Catalogue catalogue(std::move(events));
  return QuakesPage({"Test"}, ListEvents(catalogue, [](const Event &) { return true; }));
}

plain::ScanResult ScanOf(std::vector<Event> events) {
  return plain::ScanQuakesList(PageOf(std::move(events)).toStdString());
}

TEST(QuakesPage, WritesARowInTheFormThatTheScannerReads) {
  const TimeZone zone("UTC");
  const QByteArray row =
      "\n<A HREF=\"/recenteqs/Maps/116-34.html\">map</A> 1.6  "
      "<A HREF=\"/recenteqs/Quakes/ci14155392.html\">2005/06/16 14:36:24 34.049N 116.990W 11.6</A>"
      "    6 km ( 4 mi) ENE of Yucaipa, CA\n";
  EXPECT_TRUE(PageOf({Yucaipa()}).contains(row)) << PageOf({Yucaipa()}).constData();
}

TEST(QuakesPage, GivesEveryFieldOfARowBackToTheScanner) {
  const TimeZone zone("UTC");
  const plain::ScanResult scan = ScanOf({Yucaipa()});
  EXPECT_EQ(scan.failure, 0);
  ASSERT_EQ(scan.rows.size(), 1U);
  const plain::Row expected = {"1.6",
                               "2005/06/16",
                               "14:36:24",
                               "34.049N",
                               "116.990W",
                               "11.6",
                               "6 km ( 4 mi) ENE of Yucaipa, CA",
                               "recenteqs/Quakes/ci14155392.html"};
  EXPECT_EQ(scan.rows[0], expected);
}

TEST(QuakesPage, ShowsTheTimeOfTheComputersOwnZone) {
  const TimeZone zone("PST8PDT,M3.2.0,M11.1.0");
  const plain::ScanResult scan = ScanOf({Yucaipa()});
  ASSERT_EQ(scan.rows.size(), 1U);
  EXPECT_EQ(scan.rows[0][plain::column::date] + ' ' + scan.rows[0][plain::column::time], "2005/06/16 07:36:24");
}

TEST(QuakesPage, PutsTheNewestEventFirst) {
  Event older = Yucaipa();
  older.id = "older";
  older.origin_time -= 1000;
  const plain::ScanResult scan = ScanOf({older, Yucaipa()});
  ASSERT_EQ(scan.rows.size(), 2U);
  EXPECT_EQ(scan.rows[0][plain::column::link], "recenteqs/Quakes/ci14155392.html");
  EXPECT_EQ(scan.rows[1][plain::column::link], "recenteqs/Quakes/older.html");
}

TEST(QuakesPage, LeavesOutAnEventWithoutAMagnitude) {
  Event event = Yucaipa();
  event.magnitude.reset();
  const plain::ScanResult scan = ScanOf({event});
  EXPECT_TRUE(scan.rows.empty());
  EXPECT_EQ(scan.failure, 0);
}

TEST(QuakesPage, HasAPageWithoutRowsThatEndsNormally) {
  const plain::ScanResult scan = ScanOf({});
  EXPECT_TRUE(scan.rows.empty());
  EXPECT_EQ(scan.failure, 0);
  EXPECT_FALSE(PageOf({}).isEmpty());
}

TEST(QuakesPage, LeavesTheDepthEmptyWhenItIsNotKnown) {
  Event event = Yucaipa();
  event.depth.reset();
  const plain::ScanResult scan = ScanOf({event});
  ASSERT_EQ(scan.rows.size(), 1U);
  EXPECT_EQ(scan.rows[0][plain::column::depth], "");
  EXPECT_EQ(scan.rows[0][plain::column::longitude], "116.990W");
  EXPECT_EQ(scan.rows[0][plain::column::place], "6 km ( 4 mi) ENE of Yucaipa, CA");
}

TEST(QuakesPage, HasRoomForEveryMagnitudeThatAnEventMayHave) {
  for (const auto &[magnitude, text] : {std::pair(-9.9, "-9.9"), std::pair(-0.5, "-0.5"), std::pair(-0.04, "0.0"),
                                        std::pair(0.0, "0.0"), std::pair(10.2, "10.2"), std::pair(99.9, "99.9")}) {
    Event event = Yucaipa();
    event.magnitude = magnitude;
    Event second = event;
    second.id = "second";
    const plain::ScanResult scan = ScanOf({event, second});
    EXPECT_EQ(scan.failure, 0);
    ASSERT_EQ(scan.rows.size(), 2U);
    EXPECT_EQ(scan.rows[0][plain::column::magnitude], text);
    EXPECT_EQ(scan.rows[1][plain::column::magnitude], text);
  }
}

TEST(QuakesPage, KeepsItsRowsInShapeWhateverThePlaceSays) {
  const QStringList places = {
      "",
      "Hawaii",
      "a < b > c & d \" e ' f = g",
      "</A><A HREF=\"/recenteqs/Quakes/fake.html\">2005/01/01 00:00:00 1 2 3</A>",
      "/recenteqs/Quakes/fake.html",
      "<script>alert(1)</script>",
      "two\nlines\r\nand\ta tab",
      QString("null") + QChar(0) + "character",
      "Norðurþing, Acarí, Ōita, ʻŌlaʻa, Bāndar, \U0001F30B",
      QString(100000, 'x'),
  };
  std::vector<Event> events;
  for (const QString &place : places) {
    Event event = Yucaipa();
    event.id = QString("id%1").arg(events.size());
    event.place = place;
    events.push_back(event);
  }
  const plain::ScanResult scan = ScanOf(events);
  EXPECT_EQ(scan.failure, 0);
  ASSERT_EQ(scan.rows.size(), events.size());
  for (std::size_t i = 0; i < events.size(); ++i) {
    EXPECT_EQ(scan.rows[i][plain::column::link], "recenteqs/Quakes/id" + std::to_string(i) + ".html");
    EXPECT_EQ(scan.rows[i][plain::column::depth], "11.6");
    EXPECT_EQ(scan.rows[i][plain::column::magnitude], "1.6");
    const QByteArray place = RowText(places[static_cast<qsizetype>(i)]);
    EXPECT_EQ(scan.rows[i][plain::column::place], place.toStdString());
  }
}

TEST(QuakesPage, LinksEachRowToAMapPageByWholeDegrees) {
  Event event = Yucaipa();
  event.latitude = -17.9;
  event.longitude = 178.6;
  EXPECT_TRUE(PageOf({event}).contains("<A HREF=\"/recenteqs/Maps/-178--17.html\">map</A>"))
      << PageOf({event}).constData();
}

TEST(QuakesPage, HasBothHoursWhereTheClocksGoBack) {
  const TimeZone zone("PST8PDT,M3.2.0,M11.1.0");
  constexpr qint64 clocks_go_back = 1'793'523'600'000;  // 2026-11-01 09:00 UTC
  constexpr qint64 half_an_hour = 1'800'000;
  std::vector<Event> events(3, Yucaipa());
  for (std::size_t i = 0; i < events.size(); ++i) {
    events[i].id = QString("id%1").arg(i);
    events[i].origin_time = clocks_go_back + (2 * static_cast<qint64>(i) - 1) * half_an_hour;
  }
  const plain::ScanResult scan = ScanOf(events);
  ASSERT_EQ(scan.rows.size(), 3U);
  EXPECT_EQ(scan.rows[0][plain::column::time], "02:30:00");
  EXPECT_EQ(scan.rows[1][plain::column::time], "01:30:00");
  EXPECT_EQ(scan.rows[1][plain::column::link], "recenteqs/Quakes/id1.html");
  EXPECT_EQ(scan.rows[2][plain::column::time], "01:30:00");
  EXPECT_EQ(scan.rows[2][plain::column::link], "recenteqs/Quakes/id0.html");
}

TEST(QuakesPage, HasAnIntroductionAboveItsListAlsoWithoutEvents) {
  const Catalogue catalogue({Yucaipa()});
  const ListedEvents events = ListEvents(catalogue, [](const Event &) { return true; });
  EXPECT_TRUE(QuakesPage({"Test"}, events, "<p>Before</p>\n").contains("</h1>\n<p>Before</p>\n<pre>"));
  EXPECT_TRUE(QuakesPage({"Test"}, {}, "<p>Before</p>\n").contains("</h1>\n<p>Before</p>\n<p>There are no events"));
}

}  // namespace
}  // namespace borvane::mirror
