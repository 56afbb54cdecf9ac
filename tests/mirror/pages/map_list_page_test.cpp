#include "pages/map_list_page.h"

#include <gtest/gtest.h>

#include "support/mirror/sample_pages.h"
#include "support/mirror/time_zone.h"
#include "support/plain_scanners.h"

namespace borvane::mirror {
namespace {

Event EventOf(double magnitude, const QString &place = "24km S of Cedar City, UT") {
  Event event = Castaic();
  event.magnitude = magnitude;
  event.place = place;
  return event;
}

QByteArray PageOf(std::vector<Event> events) {
  // Newest first in the order given.
  for (std::size_t i = 0; i < events.size(); ++i) {
    events[i].id = QString("uu%1").arg(i);
    events[i].origin_time -= static_cast<qint64>(i);
  }
  const Catalogue catalogue(std::move(events));
  return MapListPage({"Test"}, ListEvents(catalogue, [](const Event &) { return true; }));
}

/// The longest stretch of the page without the text.
qsizetype LongestStretchWithout(const QByteArray &page, const QByteArray &text) {
  qsizetype longest = 0;
  qsizetype last = 0;
  for (qsizetype at = page.indexOf(text); at >= 0; at = page.indexOf(text, at + 1)) {
    longest = std::max(longest, at - last);
    last = at;
  }
  return longest;
}

const QByteArray small = ">map</A>";
const QByteArray capital = ">MAP</A>";

TEST(MapListPage, BeginsARowBySmallLettersBelowThree) {
  const TimeZone zone("UTC");
  const QByteArray page = PageOf({EventOf(2.9)});
  EXPECT_TRUE(
      page.contains("\n<span><A HREF=\"/recenteqs/Maps/118-34.html\">map</A> 2.9  "
                    "<A HREF=\"/recenteqs/Quakes/uu0.html\">2018/02/07 01:26:13 34.495N 118.667W 26.5</A>"
                    "     24 km (15 mi) S of Cedar City, UT </span>\n"))
      << page.constData();
}

TEST(MapListPage, BeginsARowByCapitalsFromThreeOn) {
  const TimeZone zone("UTC");
  const QByteArray page = PageOf({EventOf(3.0), EventOf(1)});
  EXPECT_TRUE(
      page.contains("\n<A HREF=\"/recenteqs/Maps/118-34.html\">MAP</A><B> 3.0  "
                    "<A HREF=\"/recenteqs/Quakes/uu0.html\">2018/02/07 01:26:13 34.495N 118.667W 26.5</A>"
                    "     24 km (15 mi) S of Cedar City, UT </B>\n"))
      << page.constData();
}

TEST(MapListPage, GoesByTheMagnitudeThatARowShows) {
  const QByteArray page = PageOf({EventOf(2.96), EventOf(2.94), EventOf(2.96)});
  EXPECT_TRUE(page.contains(capital + "<B> 3.0  ")) << page.constData();
  EXPECT_TRUE(page.contains("\n<span><A HREF=\"/recenteqs/Maps/118-34.html\">map</A> 2.9  "));
  EXPECT_TRUE(page.contains("\n<b><A HREF=\"/recenteqs/Maps/118-34.html\">map</A> 3.0  ")) << "the last row";
}

TEST(MapListPage, BeginsItsLastRowBySmallLettersAlways) {
  const QByteArray page = PageOf({EventOf(4), EventOf(5)});
  EXPECT_EQ(page.count(capital + "<B> 4.0"), 1);
  EXPECT_TRUE(page.contains("\n<b><A HREF=\"/recenteqs/Maps/118-34.html\">map</A> 5.0  ")) << page.constData();
  EXPECT_EQ(plain::ScanMapList(page.toStdString()).rows.size(), 2U);
}

TEST(MapListPage, HasACapitalMarkerInItsFoot) {
  for (const QByteArray &page : {PageOf({}), PageOf({EventOf(1)}), PageOf({EventOf(1), EventOf(4)})})
    EXPECT_GT(page.lastIndexOf(capital), page.indexOf("<footer>"));
}

TEST(MapListPage, HasNoSmallMarkerWithoutEvents) { EXPECT_FALSE(PageOf({}).contains(small)); }

TEST(MapListPage, HasAMarkerOfEachKindInEveryStretchOfThirtyThousandBytes) {
  for (const double magnitude : {1.0, 5.0}) {
    const std::vector<Event> events(1000, EventOf(magnitude, QString("&#").repeated(100)));
    const QByteArray page = PageOf(events);
    EXPECT_LE(LongestStretchWithout(page, small), 30'000) << magnitude;
    EXPECT_LE(LongestStretchWithout(page, capital), 30'000) << magnitude;
    const plain::ScanResult scan = plain::ScanMapList(page.toStdString());
    EXPECT_EQ(scan.failure, 0) << magnitude;
    EXPECT_EQ(scan.rows.size(), 1000U) << magnitude;
  }
}

TEST(MapListPage, ShowsStrongEventsInBoldHoweverTheirRowsBegin) {
  const QByteArray strong = PageOf(std::vector<Event>(1000, EventOf(5)));
  EXPECT_EQ(strong.count("</B>\n") + strong.count("</b>\n") - strong.count("PLACE</b>\n"), 1000);
  EXPECT_EQ(strong.count("\n<b><A "), strong.count(small));
  EXPECT_FALSE(strong.contains("<span"));

  const QByteArray weak = PageOf(std::vector<Event>(1000, EventOf(1)));
  EXPECT_EQ(weak.count("\n<span><A ") + weak.count("\n<span class=\"plain\"><A "), 1000);
  EXPECT_EQ(weak.count("<span class=\"plain\">"), weak.count(capital + "<B> "));
}

TEST(MapListPage, HasItsPlacesInAColumn) {
  Event wide = EventOf(-9.9, "Wide");
  wide.depth = 6370;
  Event narrow = EventOf(1, "Narrow");
  narrow.latitude = 1;
  narrow.longitude = 2;
  narrow.depth.reset();
  QByteArray text = PageOf({wide, narrow});
  text.remove(0, text.indexOf("MAP MAG"));
  const qsizetype heading = text.indexOf("PLACE");
  for (const char *place : {"Wide", "Narrow"}) {
    QByteArray line = text.first(text.indexOf(place));
    line.remove(0, line.lastIndexOf('\n') + 1);
    qsizetype tags = 0;
    for (qsizetype at = line.indexOf('<'); at >= 0; at = line.indexOf('<', at + 1))
      tags += line.indexOf('>', at) - at + 1;
    EXPECT_EQ(line.size() - tags, heading) << place;
  }
}

TEST(MapListPage, GivesEachMagnitudeAndPlaceBack) {
  std::vector<Event> events;
  for (const double magnitude : {-9.9, -0.5, 0.0, 2.99, 3.0, 10.2, 99.9, -1.0})
    for (const char *place : {"", " ", "MAP", ">map</A>", ">MAP</A><B> 9.9  <A HREF=\"/x\">", "a & b &amp; c", "x\ny"})
      events.push_back(EventOf(magnitude, place));
  const plain::ScanResult scan = plain::ScanMapList(PageOf(events).toStdString());
  EXPECT_EQ(scan.failure, 0);
  ASSERT_EQ(scan.rows.size(), events.size());
  EXPECT_EQ(scan.rows[0][plain::column::magnitude], "-9.9");
  EXPECT_EQ(scan.rows[0][plain::column::place], "");
  EXPECT_EQ(scan.rows[1][plain::column::place], "");
  EXPECT_EQ(scan.rows[2][plain::column::place], "MAP");
  EXPECT_EQ(scan.rows[3][plain::column::place], "\x9bmap\x8b/A\x9b");
  EXPECT_EQ(scan.rows[5][plain::column::place], "a & b &amp;amp; c");
  EXPECT_EQ(scan.rows[6][plain::column::place], "x y");
}

TEST(MapListPage, IsWellFormed) {
  EXPECT_EQ(FaultOf(PageOf({})), "");
  EXPECT_EQ(FaultOf(PageOf(std::vector<Event>(400, EventOf(5)))), "");
  EXPECT_EQ(FaultOf(PageOf(std::vector<Event>(400, EventOf(1)))), "");
}

}  // namespace
}  // namespace borvane::mirror
