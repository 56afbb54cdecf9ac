#include "pages/world_page.h"

#include <gtest/gtest.h>

#include "support/mirror/sample_pages.h"
#include "support/mirror/time_zone.h"
#include "support/plain_scanners.h"

namespace borvane::mirror {
namespace {

QByteArray PageOf(const std::vector<Event> &events) {
  const Catalogue catalogue(events);
  return WorldPage({"Test"}, ListEvents(catalogue, [](const Event &) { return true; }));
}

Event EventOf(double magnitude, const QString &place = "Fiji region") {
  Event event = Castaic();
  event.magnitude = magnitude;
  event.place = place;
  return event;
}

TEST(WorldPage, WritesARowInTheFormThatTheScannerReads) {
  const TimeZone zone("UTC");
  const QByteArray page = PageOf({EventOf(4.4)});
  EXPECT_TRUE(
      page.contains("\n<tr><td class=\"map\"><a href=\"/recenteqs/Maps/118-34.html\">MAP</a></td>\n"
                    "<td nowrap>4.4</td>\n"
                    "<td nowrap><a href=\"/recenteqs/Quakes/ci37868143.html\">2018/02/07 01:26:13</a></td>\n"
                    "<td nowrap><tt> 34.495N </tt></td>\n<td nowrap><tt> 118.667W </tt></td>\n"
                    "<td nowrap><tt> 26.5 </tt></td>\n<td>Fiji region</td></tr>\n"))
      << page.constData();
}

TEST(WorldPage, IsPlainBelowFourAndAHalfBoldFromThereAndColouredFromSix) {
  const QByteArray colour = "<strong><span class=\"intense\">";
  ASSERT_EQ(colour.size(), 30) << "the scanner skips 29 characters from \"strong>\"";
  for (const double magnitude : {-1.0, 2.5, 4.4, 4.44}) {
    const QByteArray page = PageOf({EventOf(magnitude)});
    EXPECT_FALSE(page.contains("<strong>")) << magnitude;
    EXPECT_TRUE(page.contains("<td>Fiji region</td>")) << magnitude;
  }
  for (const double magnitude : {4.46, 4.5, 5.0, 5.9, 5.94}) {
    const QByteArray page = PageOf({EventOf(magnitude)});
    EXPECT_TRUE(page.contains("<td nowrap><strong>" + QByteArray::number(magnitude, 'f', 1) + "</strong></td>"))
        << magnitude;
    EXPECT_TRUE(page.contains("<td><strong>Fiji region</strong></td>")) << magnitude;
  }
  for (const double magnitude : {5.96, 6.0, 9.5}) {
    const QByteArray page = PageOf({EventOf(magnitude)});
    EXPECT_TRUE(page.contains("<td nowrap>" + colour + QByteArray::number(magnitude, 'f', 1) + "</span></strong></td>"))
        << magnitude;
    EXPECT_TRUE(page.contains("<td>" + colour + "Fiji region</span></strong></td>")) << magnitude;
  }
}

TEST(WorldPage, IsReadInAllThreeWays) {
  for (const double magnitude : {4.4, 4.5, 6.0}) {
    const plain::ScanResult scan =
        plain::ScanWorldList(PageOf({EventOf(magnitude, " MAP nowrap> <td>strong> ")}).toStdString());
    EXPECT_EQ(scan.failure, 0) << magnitude;
    ASSERT_EQ(scan.rows.size(), 1U) << magnitude;
    EXPECT_EQ(scan.rows[0][plain::column::magnitude], QByteArray::number(magnitude, 'f', 1).toStdString());
    EXPECT_EQ(scan.rows[0][plain::column::place], "MAP nowrap\x9b \x8btd\x9bstrong\x9b") << magnitude;
  }
}

TEST(WorldPage, NamesEveryPlace) {
  for (const char *place : {"", " ", "\n"})
    for (const double magnitude : {1.0, 5.0, 7.0}) {
      const plain::ScanResult scan = plain::ScanWorldList(PageOf({EventOf(magnitude, place)}).toStdString());
      ASSERT_EQ(scan.rows.size(), 1U);
      EXPECT_EQ(scan.rows[0][plain::column::place], "not named");
    }
}

TEST(WorldPage, HasAMarkerAfterItsLastRowAndWithoutAny) {
  for (const QByteArray &page : {PageOf({}), PageOf({EventOf(5)})})
    EXPECT_GT(page.lastIndexOf("MAP"), page.lastIndexOf("nowrap>"));
}

TEST(WorldPage, GivesTheHeadlineItsNewestEvent) {
  const TimeZone zone("UTC");
  Event older = EventOf(7, "Older");
  older.id = "older";
  older.origin_time -= 1;
  const plain::ScanResult scan = plain::ScanWorldHeadline(PageOf({older, EventOf(4.4)}).toStdString());
  EXPECT_EQ(scan.failure, 0);
  EXPECT_EQ(scan.elsewhere, (std::vector<std::string>{"Mag: 4.4  Where: Fiji region  Time: 01:26:13",
                                                      "recenteqs/Quakes/ci37868143.html"}));
}

TEST(WorldPage, LeavesTheHeadlineAsItIsWithoutEvents) {
  const plain::ScanResult scan = plain::ScanWorldHeadline(PageOf({}).toStdString());
  EXPECT_EQ(scan.failure, 0);
  EXPECT_TRUE(scan.elsewhere.empty());
}

TEST(WorldPage, IsWellFormedButForOneAttribute) {
  for (const QByteArray &page : {PageOf({}), PageOf({EventOf(1, "<b>&amp;")}), PageOf({EventOf(7)})})
    EXPECT_EQ(FaultOf(QByteArray(page).replace("<td nowrap>", "<td>")), "");
}

}  // namespace
}  // namespace borvane::mirror
