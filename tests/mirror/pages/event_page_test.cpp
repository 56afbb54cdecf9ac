#include "pages/event_page.h"

#include <gtest/gtest.h>

#include "catalogue/sample.h"
#include "support/mirror/sample_pages.h"
#include "support/mirror/time_zone.h"

namespace borvane::mirror {
namespace {

QByteArray PageOf(const Event &event) { return EventPage(event, Catalogue({event}), 8080); }

TEST(EventPage, ShowsTheFiguresOfItsEvent) {
  const TimeZone zone("PST8PDT,M3.2.0,M11.1.0");
  const QByteArray page = PageOf(Castaic());
  EXPECT_TRUE(page.contains("<h1>Magnitude 2.0, 4 km (2 mi) W of Castaic, CA</h1>"));
  for (const char *row :
       {"<dt>Place</dt><dd>4 km (2 mi) W of Castaic, CA</dd>", "<dt>Magnitude</dt><dd>2.0</dd>",
        "<dt>Local time</dt><dd>2018/02/06 17:26:13 (UTC-08:00)</dd>", "<dt>UTC</dt><dd>2018/02/07 01:26:13</dd>",
        "<dt>Epicentre</dt><dd>34.495N 118.667W</dd>", "<dt>Depth</dt><dd>26.5 km (16.5 mi)</dd>",
        "<dt>Kind</dt><dd>Earthquake</dd>", "<dt>Network</dt><dd>ci</dd>", "<dt>Id</dt><dd>ci37868143</dd>"})
    EXPECT_TRUE(page.contains(row)) << row;
}

TEST(EventPage, SaysWhatIsNotKnown) {
  Event event = Castaic();
  event.magnitude.reset();
  event.depth.reset();
  event.place.clear();
  event.network.clear();
  event.kind = "quarry blast";
  const QByteArray page = PageOf(event);
  EXPECT_TRUE(page.contains("<h1>Quarry blast</h1>"));
  EXPECT_TRUE(page.contains("<dt>Place</dt><dd>not named</dd>"));
  EXPECT_TRUE(page.contains("<dt>Magnitude</dt><dd>not known</dd>"));
  EXPECT_TRUE(page.contains("<dt>Depth</dt><dd>not known</dd>"));
  EXPECT_FALSE(page.contains("<dt>Network</dt>"));
  EXPECT_EQ(FaultOf(page), "");
}

TEST(EventPage, LinksToTheListsThatHoldTheEvent) {
  const QByteArray page = PageOf(Castaic());
  EXPECT_TRUE(page.contains("href=\"http://southern.localhost:8080/recenteqs/Maps/Los_Angeles.html\""));
  EXPECT_FALSE(page.contains("San_Francisco.html"));
  EXPECT_TRUE(page.contains("href=\"/recenteqs/Maps/118-34.html\""));
  EXPECT_TRUE(page.contains("href=\"https://earthquake.usgs.gov/earthquakes/eventpage/ci37868143\""));
  EXPECT_TRUE(page.contains("href=\"/\""));
}

TEST(EventPage, DrawsTheEventAndItsNeighbours) {
  Event near = Castaic();
  near.id = "near";
  near.latitude += 1;
  Event far = Castaic();
  far.id = "far";
  far.latitude += 3;
  const QByteArray alone = PageOf(Castaic());
  const QByteArray together = EventPage(Castaic(), Catalogue({Castaic(), near, far}), 8080);
  EXPECT_TRUE(alone.contains("<svg "));
  EXPECT_TRUE(alone.contains("aria-label=\"Map: the epicentre at 34.495N 118.667W\""));
  EXPECT_EQ(together.count("<circle"), alone.count("<circle") + 1);
}

TEST(EventPage, DrawsTheWholeCatalogueOnTheGlobe) {
  Event elsewhere = Castaic();
  elsewhere.id = "elsewhere";
  elsewhere.latitude = -20;
  elsewhere.longitude = 170;
  const QByteArray page = EventPage(Castaic(), Catalogue({Castaic(), elsewhere}), 8080);
  EXPECT_TRUE(page.contains("<path d=\"M409 44h.1M640 88h.1\"")) << page.constData();
}

TEST(EventPage, IsWellFormedWhereverTheEventWas) {
  for (const double latitude : {-90.0, -89.9, -45.5, 0.0, 0.4, 34.0, 89.99, 90.0})
    for (const double longitude : {-180.0, -179.5, -0.4, 0.0, 0.4, 90.0, 179.9, 180.0}) {
      Event event = Castaic();
      event.latitude = latitude;
      event.longitude = longitude;
      const QByteArray page = PageOf(event);
      EXPECT_EQ(FaultOf(page), "") << latitude << ' ' << longitude;
      EXPECT_FALSE(page.contains("nan") || page.contains("inf\"")) << latitude << ' ' << longitude;
      EXPECT_LT(page.size(), 20'000) << latitude << ' ' << longitude;
    }
}

TEST(EventPage, EscapesWhateverTheCatalogueSays) {
  const QString bad = "</title></style><script>alert('1')</script><a href=\"x\">&amp;\U0001F30B\n";
  Event event = Castaic();
  event.place = bad;
  event.network = bad;
  event.kind = bad;
  const QByteArray page = PageOf(event);
  EXPECT_EQ(FaultOf(page), "");
  EXPECT_FALSE(page.contains("<script"));
  EXPECT_FALSE(page.contains("<a href=\"x\""));
  EXPECT_EQ(page.count("</title>"), 1);
}

TEST(EventPage, LoadsNothingFromElsewhere) {
  const QByteArray page = PageOf(Castaic());
  for (const char *loading : {"src=", "<link", "@import", "url(", "<script", "<iframe", "<img"})
    EXPECT_FALSE(page.contains(loading)) << loading;
}

TEST(EventPage, IsWellFormedForEveryEventOfTheSample) {
  const Catalogue catalogue(SampleEvents());
  for (const Event &event : catalogue.events())
    ASSERT_EQ(FaultOf(EventPage(event, catalogue, 1)), "") << event.id.toStdString();
}

}  // namespace
}  // namespace borvane::mirror
