#include "pages/region_page.h"

#include <gtest/gtest.h>

#include "support/mirror/sample_pages.h"
#include "support/mirror/time_zone.h"
#include "support/plain_scanners.h"

namespace borvane::mirror {
namespace {

const QByteArray marker = "<td><center>Region</center></td>";

QByteArray PageOf(const std::vector<Event> &events, const QByteArray &host = "alaska.localhost:17650") {
  const Catalogue catalogue(events);
  return RegionPage({"Test"}, ListEvents(catalogue, [](const Event &) { return true; }), host);
}

Event EventOf(const QString &id, qint64 older = 0) {
  Event event = Castaic();
  event.id = id;
  event.origin_time -= older;
  return event;
}

TEST(RegionPage, WritesItsNewestEventInTheFormThatTheScannerReads) {
  const TimeZone zone("UTC");
  const QByteArray link = "<td><a href=\"http://alaska.localhost:17650/recenteqs/Quakes/ak1.html\">";
  const QByteArray page = PageOf({EventOf("ak1")});
  EXPECT_TRUE(page.contains(marker + "</tr>\n<tr>" + link + "2018/02/07 01:26:13</a></td> " + link + "2.0</a></td> " +
                            link + "4 km ( 2 mi) W of Castaic, CA</a></td></tr>\n</TABLE>\n"))
      << page.constData();
}

TEST(RegionPage, LinksItsNewestEventOnTheHostOfTheRequest) {
  for (const char *host : {"127.0.0.1:8080", "[::1]:17650", "quakes.school"}) {
    const plain::ScanResult scan = plain::ScanRegionTable(PageOf({EventOf("ak1")}, host).toStdString());
    ASSERT_EQ(scan.rows.size(), 1U);
    EXPECT_EQ(scan.rows[0][plain::region_column::link], "http://" + std::string(host) + "/recenteqs/Quakes/ak1.html");
  }
}

TEST(RegionPage, HasNoOtherHtmlInAnAddressThanItsEnd) {
  const plain::ScanResult scan =
      plain::ScanRegionTable(PageOf({EventOf("ahtmlb.html")}, "html.html.example").toStdString());
  EXPECT_EQ(scan.failure, 0);
  ASSERT_EQ(scan.rows.size(), 1U);
  EXPECT_EQ(scan.rows[0][plain::region_column::link], "http://HTML.HTML.example/recenteqs/Quakes/aht%6Dlb.ht%6Dl.html");
  EXPECT_EQ(scan.rows[0][plain::region_column::magnitude], "2.0");
}

TEST(RegionPage, EndsTheTableOfTheScannerAfterOneRow) {
  Event event = EventOf("ak1");
  for (int length = 0; length <= 200; ++length) {
    event.place = QString(length, 'x');
    const plain::ScanResult scan =
        plain::ScanRegionTable(PageOf({event, EventOf("ak2", 1), EventOf("ak3", 2)}).toStdString());
    EXPECT_EQ(scan.failure, 0) << length;
    EXPECT_EQ(scan.elsewhere, (std::vector<std::string>{"columns", "widths"})) << length;
    ASSERT_EQ(scan.rows.size(), 1U) << length;
    EXPECT_EQ(scan.rows[0][plain::region_column::place], event.place.toStdString());
  }
}

TEST(RegionPage, HasNoEndOfATableInSmallLetters) {
  EXPECT_FALSE(PageOf({EventOf("ak1"), EventOf("ak2", 1)}).contains("</table>"));
}

TEST(RegionPage, ListsEarlierEventsInATableForPeople) {
  const TimeZone zone("UTC");
  const QByteArray page = PageOf({EventOf("ak1"), EventOf("ak2", 1000), EventOf("ak3", 2000)});
  EXPECT_EQ(page.count("<TABLE>"), 2);
  EXPECT_TRUE(
      page.contains("<tr><td><a href=\"/recenteqs/Quakes/ak2.html\">2018/02/07 01:26:12</a></td> <td>2.0</td> "
                    "<td>4 km ( 2 mi) W of Castaic, CA</td></tr>\n"))
      << page.constData();
  EXPECT_GT(page.indexOf("ak3.html"), page.indexOf("ak2.html"));
  EXPECT_EQ(PageOf({EventOf("ak1")}).count("<TABLE>"), 1);
}

TEST(RegionPage, LeavesTheMarkerOutWithoutEvents) {
  EXPECT_FALSE(PageOf({}).contains(marker));
  EXPECT_EQ(plain::ScanRegionTable(PageOf({}).toStdString()).elsewhere, std::vector<std::string>());
}

TEST(RegionPage, IsWellFormed) {
  EXPECT_EQ(FaultOf(PageOf({})), "");
  Event bad = EventOf("ak2", 1);
  bad.place = "<b>&amp;</TABLE>";
  EXPECT_EQ(FaultOf(PageOf({EventOf("ak1"), bad})), "");
}

}  // namespace
}  // namespace borvane::mirror
