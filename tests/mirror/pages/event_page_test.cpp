#include "pages/event_page.h"

#include <QStringDecoder>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include "catalogue/sample.h"
#include "pages/index_page.h"
#include "pages/site.h"
#include "support/mirror/time_zone.h"

namespace borvane::mirror {
namespace {

Event Castaic() {
  return {.id = "ci37868143",
          .origin_time = 1517966773000,
          .latitude = 34.495,
          .longitude = -118.667,
          .depth = 26.5,
          .magnitude = 2.04,
          .place = "4km W of Castaic, CA",
          .network = "ci",
          .kind = "earthquake"};
}

QByteArray PageOf(const Event &event) { return EventPage(event, Catalogue({event}), 8080); }

/// Why the page is not well-formed; empty when it is. The pages close every element and quote every attribute, so that
/// the strict rules of XML hold for them, too.
std::string FaultOf(const QByteArray &page) {
  QXmlStreamReader reader(QString(QStringDecoder("windows-1252").decode(page)));
  while (!reader.atEnd())
    reader.readNext();
  return reader.hasError() ? reader.errorString().toStdString() : "";
}

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

TEST(IndexPage, IsWellFormedAndLinksEachArea) {
  const QByteArray page = IndexPage(Catalogue(SampleEvents()), "<b>&.geojson", 8080);
  EXPECT_EQ(FaultOf(page), "");
  EXPECT_TRUE(page.contains("1306 events from &lt;b&gt;&amp;.geojson"));
  EXPECT_TRUE(page.contains("href=\"http://memphis.localhost:8080/recenteqs/Quakes/quakes0.html\""));
  EXPECT_EQ(FaultOf(IndexPage(Catalogue(), "nothing", 8080)), "");
}

TEST(Site, MakesItsPagesAgainWhenTheCatalogueChanges) {
  Site site;
  site.SetPort(8080);
  EXPECT_EQ(site.Page("/recenteqs/Quakes/ci37868143.html", ""), std::nullopt);
  const QByteArray empty = site.Page("/recenteqs/Maps/Los_Angeles.html", "southern.localhost").value();
  site.SetCatalogue(std::make_shared<Catalogue>(std::vector<Event>{Castaic()}), "a test");
  EXPECT_TRUE(site.Page("/recenteqs/Quakes/ci37868143.html", "").has_value());
  EXPECT_NE(site.Page("/recenteqs/Maps/Los_Angeles.html", "southern.localhost").value(), empty);
  EXPECT_TRUE(site.Page("/", "").value().contains("1 event from a test"));
}

/// What the site says in place of a page.
Answer RefusalOf(const QByteArray &target) {
  const Site site;
  return site.Refusal(503, target, "southern.localhost");
}

TEST(Site, RefusesListPagesWithoutABodySoThatTheMonitorKeepsItsRows) {
  for (const char *target : {"/recenteqs/Maps/Los_Angeles.html", "/recenteqs/Maps/1-2.html?x", "/recenteqs_sub/",
                             "/recenteqs/Quakes/quakes0.html#x"}) {
    EXPECT_EQ(RefusalOf(target).status, 503) << target;
    EXPECT_EQ(RefusalOf(target).body, "") << target;
  }
}

TEST(Site, RefusesEventPagesWithABodyThatTheMonitorSurvives) {
  // The monitor looks for a "<" after the place of each label, as if the label were at the page's start.
  for (const int status : {400, 404, 408, 414, 431, 503}) {
    const QByteArray body = Site().Refusal(status, "/recenteqs/Quakes/ci1.html", "").body;
    EXPECT_GE(body.indexOf('<', 25), 25) << status;
    for (const char *label : {"Latitude", "Longitude", "Depth"})
      EXPECT_FALSE(body.contains(label)) << status;
  }
}

TEST(Site, AnswersWhatItDoesNotHaveWithNotFound) {
  Site site;
  for (const char *target : {"/nowhere", "/recenteqs/Maps/Nowhere.html", "/recenteqs/Quakes/ci1.html"}) {
    std::optional<Answer> answer;
    site.Handle({.method = "GET", .target = target}, QHostAddress(), [&](const Answer &given) { answer = given; });
    ASSERT_TRUE(answer) << target;
    EXPECT_EQ(answer->status, 404) << target;
    EXPECT_EQ(answer->body.isEmpty(), IsListPath(target)) << target;
  }
}

TEST(Site, ServesAreasOnTheirOwnHostsOnly) {
  Site site;
  EXPECT_TRUE(site.Page("/recenteqs/Maps/Parkfield.html", "northern.localhost").has_value());
  EXPECT_TRUE(site.Page("/recenteqs/Maps/Parkfield.html", "127.0.0.1:17650").has_value());
  EXPECT_EQ(site.Page("/recenteqs/Maps/Parkfield.html", "southern.localhost"), std::nullopt);
}

TEST(Site, ServesEventsAndCoordinatesOnEveryHost) {
  Site site;
  site.SetCatalogue(std::make_shared<Catalogue>(std::vector<Event>{Castaic()}), "a test");
  for (const char *host : {"southern.localhost", "alaska.localhost:1", "example.org", ""}) {
    EXPECT_TRUE(site.Page("/recenteqs/Quakes/ci37868143.html", host).has_value()) << host;
    EXPECT_TRUE(site.Page("/recenteqs/Maps/118-34.html", host).has_value()) << host;
  }
}

TEST(Site, CutsAQueryAndAFragmentOff) {
  Site site;
  for (const char *target :
       {"/recenteqs/Maps/1-2.html?x", "/recenteqs/Maps/1-2.html#x?y", "/recenteqs/Maps/1-2.html?a#b"})
    EXPECT_TRUE(site.Page(target, "").has_value()) << target;
}

}  // namespace
}  // namespace borvane::mirror
