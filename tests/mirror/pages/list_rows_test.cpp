#include "pages/list_rows.h"

#include <gtest/gtest.h>

#include "support/mirror/sample_pages.h"
#include "support/mirror/time_zone.h"

namespace borvane::mirror {
namespace {

TEST(ListEvents, HoldsTheChosenEventsWithAMagnitudeNewestFirst) {
  std::vector<Event> events;
  for (const char *id : {"a", "b", "c", "d"}) {
    events.push_back(Castaic());
    events.back().id = id;
    events.back().origin_time += static_cast<qint64>(events.size());
  }
  events[1].magnitude.reset();
  const Catalogue catalogue(events);
  const ListedEvents listed = ListEvents(catalogue, [](const Event &event) { return event.id != "c"; });
  ASSERT_EQ(listed.size(), 2U);
  EXPECT_EQ(listed[0]->id, "d");
  EXPECT_EQ(listed[1]->id, "a");
}

TEST(RowFigures, HaveOneBlankBetweenThem) {
  const TimeZone zone("UTC");
  EXPECT_EQ(RowFigures(Castaic()), "2018/02/07 01:26:13 34.495N 118.667W 26.5");
  Event event = Castaic();
  event.depth.reset();
  event.latitude = -0.0001;
  event.longitude = 179.9999;
  EXPECT_EQ(RowFigures(event), "2018/02/07 01:26:13 0.000N 180.000E ");
}

TEST(EventPath, IsTheSameOnEveryHost) { EXPECT_EQ(EventPath(Castaic()), "/recenteqs/Quakes/ci37868143.html"); }

TEST(ListPage, IsTheFrameOfEveryList) {
  const QByteArray page = ListPage("A & B", "<p>list</p>\n", "Legend. ", "<base href=\"/\"/>");
  EXPECT_EQ(FaultOf(page), "");
  EXPECT_TRUE(page.contains("<h1>Recent Earthquakes: A &amp; B</h1>\n<p>list</p>\n<footer>Legend. Times are local"));
  EXPECT_TRUE(page.contains("<base href=\"/\"/></head>"));
}

}  // namespace
}  // namespace borvane::mirror
