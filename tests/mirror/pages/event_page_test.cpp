#include "pages/event_page.h"

#include <gtest/gtest.h>

#include "basic/number.h"
#include "catalogue/sample.h"
#include "pages/figures.h"
#include "support/mirror/random_catalogue.h"
#include "support/mirror/sample_pages.h"
#include "support/mirror/time_zone.h"
#include "support/plain_scanners.h"

namespace borvane::mirror {
namespace {

QByteArray PageOf(const Event &event) { return EventPage(event, Catalogue({event}), PageHost("", 8080)); }

/// What the monitor reads of the event's page.
plain::EventPage Reading(const Event &event) { return plain::ReadEventPage(PageOf(event).toStdString()); }

TEST(EventPage, ShowsTheFiguresOfItsEvent) {
  const TimeZone zone("PST8PDT,M3.2.0,M11.1.0");
  const QByteArray page = PageOf(Castaic());
  EXPECT_TRUE(page.contains("<h1>Magnitude 2.0, 4 km (2 mi) W of Castaic, CA</h1>"));
  for (const char *row :
       {"<dt>Place:</dt> <dd>4 km (2 mi) W of Castaic, CA</dd>", "<dt>Magnitude:</dt> <dd>2.0</dd>",
        "<dt>Local time:</dt> <dd>2018/02/06 17:26:13 (UTC-08:00)</dd>", "<dt>UTC:</dt> <dd>2018/02/07 01:26:13</dd>",
        "<dt>Latitude:</dt> <dd>34.495</dd>", "<dt>Longitude:</dt> <dd>-118.667</dd>",
        "<dt>Depth:</dt> <dd>26.5 km (16.5 mi)</dd>", "<dt>Kind:</dt> <dd>Earthquake</dd>",
        "<dt>Network:</dt> <dd>ci</dd>", "<dt>Id:</dt> <dd>ci37868143</dd>"})
    EXPECT_TRUE(page.contains(row)) << row;
}

TEST(EventPage, GivesLatitudeLongitudeAndDepthBackToTheMonitor) {
  Event event = Castaic();
  event.latitude = 61.726;
  event.longitude = -149.628;
  EXPECT_EQ(Reading(event), (plain::EventPage{61.726F, -149.628F, 0, "26.5 km (16.5 mi)", 0}));
  event.latitude = -0.0001;
  event.longitude = 179.9999;
  event.depth.reset();
  EXPECT_EQ(Reading(event), (plain::EventPage{0, 180, 0, "not known", 0}));
  event.latitude = -7.1693;
  event.depth = -1.25;
  EXPECT_EQ(Reading(event), (plain::EventPage{-7.169F, 180, 0, "-1.3 km (-0.8 mi)", 0}));
}

TEST(EventPage, GivesTheFiguresBackWhateverItsTextsSay) {
  for (int number = 0; number < 2000; ++number) {
    RandomCatalogue random(static_cast<unsigned>(number));
    const Catalogue catalogue = random.Make(1 + number % 4);
    for (const Event &event : catalogue.events()) {
      const plain::EventPage read = plain::ReadEventPage(EventPage(event, catalogue, PageHost("", 8080)).toStdString());
      ASSERT_EQ(read.coordinates_failure, 0) << number;
      ASSERT_EQ(read.depth_failure, 0) << number;
      ASSERT_EQ(read.latitude, SinglePrefix(SignedDegreesText(event.latitude).toStdString())) << number;
      ASSERT_EQ(read.longitude, SinglePrefix(SignedDegreesText(event.longitude).toStdString())) << number;
      const std::string depth = event.depth ? DepthText(event.depth).toStdString() + " km (" : "not known";
      ASSERT_EQ(read.depth.substr(0, depth.size()), depth) << number;
    }
  }
}

TEST(EventPage, HasItsFiguresInFrontOfTheMap) {
  std::vector<Event> events(1000, Castaic());
  for (std::size_t i = 0; i < events.size(); ++i)
    events[i].id = QString("near%1").arg(i);
  const Catalogue catalogue(events);
  const QByteArray page = EventPage(events[0], catalogue, PageHost("", 8080));
  EXPECT_GT(page.size(), 32'767);
  EXPECT_LT(page.indexOf("Depth:"), page.indexOf("<svg "));
  EXPECT_EQ(plain::ReadEventPage(page.toStdString()).depth, "26.5 km (16.5 mi)");
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
  EXPECT_TRUE(page.contains("<dt>Place:</dt> <dd>not named</dd>"));
  EXPECT_TRUE(page.contains("<dt>Magnitude:</dt> <dd>not known</dd>"));
  EXPECT_TRUE(page.contains("<dt>Depth:</dt> <dd>not known</dd>"));
  EXPECT_FALSE(page.contains("<dt>Network:</dt>"));
  EXPECT_EQ(FaultOf(page), "");
}

TEST(EventPage, TellsQuarryBlastsFromEarthquakes) {
  Event event = Castaic();
  event.kind = "quarry blast";
  event.is_listed = false;
  const QByteArray page = PageOf(event);
  EXPECT_TRUE(page.contains("<h1>Quarry blast of magnitude 2.0, 4 km (2 mi) W of Castaic, CA</h1>"));
  EXPECT_TRUE(page.contains("<dt>Kind:</dt> <dd>Quarry blast</dd>"));
  EXPECT_FALSE(page.contains("Los_Angeles.html")) << "no list has it";
}

TEST(EventPage, NamesItsCreditAndTheTimeOfTheData) {
  const TimeZone zone("UTC");
  EXPECT_TRUE(PageOf(Castaic()).contains("<dt>Credit:</dt> <dd>U.S. Geological Survey, public domain</dd>"));
  Event event = Castaic();
  event.credit = "Depth: <Centre>";
  event.updated = event.origin_time + 60'000;
  const QByteArray page =
      EventPage(event, Catalogue({event}), PageHost("", 8080), {.data_time = event.origin_time + 3'600'000});
  EXPECT_EQ(FaultOf(page), "");
  EXPECT_TRUE(page.contains("</h1>\n<p>Data as of 2018/02/07 02:26:13 (UTC+00:00).</p>\n<dl>"));
  EXPECT_TRUE(page.contains("<dt>Credit:</dt> <dd>Depth&#58; &lt;Centre&gt;</dd>"));
  EXPECT_TRUE(page.contains("<dt>Revised:</dt> <dd>2018/02/07 01:27:13 (UTC+00:00)</dd>"));
  EXPECT_TRUE(page.contains("Event: Depth&#58; &lt;Centre&gt;.</footer>"));
  EXPECT_FALSE(page.contains("earthquake.usgs.gov")) << "the Survey does not know the event by this id";
  EXPECT_EQ(plain::ReadEventPage(page.toStdString()).depth, "26.5 km (16.5 mi)");
}

TEST(EventPage, LinksToTheListsThatHoldTheEvent) {
  const QByteArray page = PageOf(Castaic());
  EXPECT_TRUE(page.contains("href=\"/recenteqs/Maps/Los_Angeles.html\""));
  EXPECT_FALSE(page.contains("San_Francisco.html"));
  EXPECT_TRUE(page.contains("href=\"/recenteqs/Maps/118-34.html\""));
  EXPECT_TRUE(page.contains("href=\"https://earthquake.usgs.gov/earthquakes/eventpage/ci37868143\""));
  EXPECT_TRUE(page.contains("href=\"/\""));
}

TEST(EventPage, LinksToTheSurveyWhateverItsCreditIs) {
  Event event = Castaic();
  event.credit = "USGS";
  const auto links = [&](bool is_survey) {
    const PageFacts facts = {.sources = {{.name = "A", .text = "USGS", .is_survey = is_survey},
                                         {.name = "B", .text = "Another", .is_survey = true}}};
    return EventPage(event, Catalogue({event}), PageHost("", 8080), facts).contains("earthquake.usgs.gov");
  };
  EXPECT_TRUE(links(true));
  EXPECT_FALSE(links(false));
}

TEST(EventPage, DrawsTheEventAndItsNeighbours) {
  Event near = Castaic();
  near.id = "near";
  near.latitude += 1;
  Event far = Castaic();
  far.id = "far";
  far.latitude += 3;
  const QByteArray alone = PageOf(Castaic());
  const QByteArray together = EventPage(Castaic(), Catalogue({Castaic(), near, far}), PageHost("", 8080));
  EXPECT_TRUE(alone.contains("<svg "));
  EXPECT_TRUE(alone.contains("aria-label=\"Map: the epicentre at 34.495N 118.667W\""));
  EXPECT_EQ(together.count("<circle"), alone.count("<circle") + 1);
}

TEST(EventPage, DrawsTheWholeCatalogueOnTheGlobe) {
  Event elsewhere = Castaic();
  elsewhere.id = "elsewhere";
  elsewhere.latitude = -20;
  elsewhere.longitude = 170;
  const QByteArray page = EventPage(Castaic(), Catalogue({Castaic(), elsewhere}), PageHost("", 8080));
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
    ASSERT_EQ(FaultOf(EventPage(event, catalogue, PageHost("", 1))), "") << event.id.toStdString();
}

}  // namespace
}  // namespace borvane::mirror
