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

TEST(ListEvents, LeavesOutWhatMayNotBeListed) {
  Event blast = Castaic();
  blast.id = "blast";
  blast.is_listed = false;
  const Catalogue catalogue({Castaic(), blast});
  const ListedEvents listed = ListEvents(catalogue, [](const Event &) { return true; });
  ASSERT_EQ(listed.size(), 1U);
  EXPECT_EQ(listed[0]->id, "ci37868143");
}

/// The frame of a list of the events.
ListFrame FrameAround(const std::vector<Event> &events, const PageFacts &facts) {
  const Catalogue catalogue(events);
  return FrameOf("Here", ListEvents(catalogue, [](const Event &) { return true; }), facts);
}

TEST(FrameOf, StatesTheTimeOfTheDataAndTheZoneOfTheRows) {
  const TimeZone zone("PST8PDT,M3.2.0,M11.1.0");
  Event older = Castaic();
  older.id = "older";
  older.origin_time -= 120LL * 86'400'000;
  const PageFacts facts = {.data_time = Castaic().origin_time};
  EXPECT_EQ(FrameAround({Castaic()}, facts).note,
            "<p>Data as of 2018/02/06 17:26:13 (UTC-08:00). Times are local: UTC-08:00.</p>\n");
  EXPECT_EQ(FrameAround({Castaic(), older}, {}).note,
            "<p>Times are local: UTC-08:00 (UTC-07:00 before 2017/11/05 09:00:00 UTC).</p>\n");
  EXPECT_EQ(FrameAround({}, facts).note, "<p>Data as of 2018/02/06 17:26:13 (UTC-08:00).</p>\n");
  EXPECT_EQ(FrameAround({}, {}).note, "");
}

TEST(FrameOf, SaysThatTheSampleIsOne) {
  EXPECT_EQ(FrameAround({}, {.is_sample = true}).note, "<p>These events are a bundled sample, not today's.</p>\n");
}

TEST(FrameOf, NamesTheCreditOfEachSourceOnce) {
  std::vector<Event> events(6, Castaic());
  for (std::size_t i = 0; i < events.size(); ++i) {
    events[i].id = QString("e%1").arg(i);
    events[i].credit = i % 3 == 0 ? "Centre" : i % 3 == 1 ? "Survey" : "";
  }
  EXPECT_EQ(FrameAround(events, {}).credit, "Centre; Survey; U.S. Geological Survey");
  EXPECT_EQ(FrameAround({}, {}).credit, "U.S. Geological Survey");
}

TEST(EventPath, IsTheSameOnEveryHost) { EXPECT_EQ(EventPath(Castaic()), "/recenteqs/Quakes/ci37868143.html"); }

TEST(ListPage, HasItsNoteUnderTheHeadingAndItsCreditAtTheFoot) {
  const QByteArray page = ListPage({.title = "A", .note = "<p>note</p>\n", .credit = "B & C <recenteqs/Quakes>"}, "");
  EXPECT_EQ(FaultOf(page), "");
  EXPECT_TRUE(page.contains("</h1>\n<p>note</p>\n<footer>"));
  EXPECT_TRUE(page.contains("Source: B &amp; C &lt;recenteqs Quakes&gt;.</footer>")) << page.constData();
}

TEST(ListPage, IsTheFrameOfEveryList) {
  const QByteArray page = ListPage({"A & B"}, "<p>list</p>\n", "Legend. ", "<base href=\"/\"/>");
  EXPECT_EQ(FaultOf(page), "");
  EXPECT_TRUE(page.contains(
      "<h1>Recent Earthquakes: A &amp; B</h1>\n<p>list</p>\n<footer>Legend. Depths are in kilometres. Source: "));
  EXPECT_TRUE(page.contains("<base href=\"/\"/></head>"));
}

}  // namespace
}  // namespace borvane::mirror
