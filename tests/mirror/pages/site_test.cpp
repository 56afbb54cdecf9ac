#include "pages/site.h"

#include <memory>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

#include "pages/areas.h"
#include "support/mirror/sample_pages.h"
#include "support/plain_scanners.h"

namespace borvane::mirror {
namespace {

TEST(Site, MakesItsPagesAgainWhenTheCatalogueChanges) {
  Site site;
  site.SetPort(8080);
  EXPECT_EQ(site.Page("/recenteqs/Quakes/ci37868143.html", ""), std::nullopt);
  const QByteArray empty = site.Page("/recenteqs/Maps/Los_Angeles.html", "southern.localhost").value();
  site.SetCatalogue(std::make_shared<Catalogue>(std::vector<Event>{Castaic()}), {.origin = "a test"});
  EXPECT_TRUE(site.Page("/recenteqs/Quakes/ci37868143.html", "").has_value());
  EXPECT_NE(site.Page("/recenteqs/Maps/Los_Angeles.html", "southern.localhost").value(), empty);
  EXPECT_TRUE(site.Page("/", "").value().contains("1 event from a test"));
}

TEST(Site, ListsTheEventsOfTheBoxesThatItIsGiven) {
  Site site;
  const QByteArray path = "/recenteqs/Maps/Los_Angeles.html";
  const auto catalogue = std::make_shared<Catalogue>(std::vector<Event>{Castaic()});
  site.SetCatalogue(catalogue, {});
  EXPECT_TRUE(site.Page(path, "southern.localhost").value().contains("Castaic"));
  site.SetCatalogue(catalogue, {.areas = AreasWith({{"Los Angeles", {33, 34, -119.5, -116.5}}})});
  EXPECT_FALSE(site.Page(path, "southern.localhost").value().contains("Castaic"));
  EXPECT_FALSE(site.Page("/recenteqs/Quakes/ci37868143.html", "").value().contains("Los_Angeles.html"));
}

TEST(Site, ServesAreasByTheFirstLabelOfAnyName) {
  Site site;
  const QByteArray path = "/recenteqs/Quakes/quakes0.html";
  EXPECT_TRUE(site.Page(path, "memphis.quakes.school:80").value().contains("Central US"));
  EXPECT_TRUE(site.Page(path, "pacificnorthwest.quakes.school").value().contains("Pacific Northwest"));
  EXPECT_EQ(site.Page(path, "quakes.school"), std::nullopt);
}

/// What the site says in place of a page.
Answer RefusalOf(const QByteArray &target) {
  const Site site;
  return site.Refusal(503, target, "southern.localhost");
}

TEST(Site, RefusesListPagesWithoutABodySoThatTheMonitorKeepsItsRows) {
  for (const char *target : {"/recenteqs/Maps/Los_Angeles.html", "/recenteqs/Maps/1-2.html?x", "/recenteqs_sub/",
                             "/recenteqs/Quakes/quakes0.html#x", "/req2webdir/recenteqs/Quakes/quakes0.html",
                             "/LCSN/recenteqs/Quakes/quakes0.html", "/eqcenter/recenteqsww/Quakes/quakes_all.php?x",
                             "/eqcenter/recenteqsww/Quakes/quakes_big.php", "/recenteqs/eqs_all.htm"}) {
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
  for (const char *target :
       {"/nowhere", "/recenteqs/Maps/Nowhere.html", "/recenteqs/Quakes/ci1.html", "/recenteqs_sub/",
        "/eqcenter/recenteqsww/Quakes/quakes_all.php", "/recenteqs/eqs_all.htm"}) {
    std::optional<Answer> answer;
    site.Handle({.method = "GET", .target = target, .host = "southern.localhost"}, QHostAddress(),
                [&](const Answer &given) { answer = given; });
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
  site.SetCatalogue(std::make_shared<Catalogue>(std::vector<Event>{Castaic()}), {.origin = "a test"});
  std::vector<std::string> hosts = {"example.org", ""};
  for (const EndpointHost &row : endpoint_hosts)
    hosts.push_back(MirrorHost(row.endpoint, 1));
  for (const BrowserHost &row : browser_hosts)
    hosts.push_back(std::string(row.label) + ".localhost");
  for (const std::string &host : hosts) {
    EXPECT_TRUE(site.Page("/recenteqs/Quakes/ci37868143.html", QByteArray::fromStdString(host)).has_value()) << host;
    EXPECT_TRUE(site.Page("/recenteqs/Maps/118-34.html", QByteArray::fromStdString(host)).has_value()) << host;
  }
}

/// Castaic in Alaska.
Event Kodiak() {
  Event event = Castaic();
  event.id = "ak1";
  event.latitude = 57.8;
  event.longitude = -152.4;
  return event;
}

TEST(Site, LinksTheRegionsEventOnTheHostOfEachRequest) {
  Site site;
  site.SetPort(8080);
  site.SetCatalogue(std::make_shared<Catalogue>(std::vector<Event>{Kodiak()}), {.origin = "a test"});
  const auto address = [&](const QByteArray &host) {
    return plain::ScanRegionTable(site.Page("/recenteqs_sub/", host).value().toStdString())
        .rows.at(0)[plain::region_column::link];
  };
  for (const char *host : {"alaska.localhost:17650", "127.0.0.1:1", "Alaska.LocalHost", "alaska.localhost:17650"})
    EXPECT_EQ(address(host), "http://" + std::string(host) + "/recenteqs/Quakes/ak1.html");
}

TEST(Site, LinksTheRegionsEventOnItsOwnHostWhereTheRequestNamesNone) {
  Site site;
  site.SetPort(8080);
  site.SetCatalogue(std::make_shared<Catalogue>(std::vector<Event>{Kodiak()}), {.origin = "a test"});
  for (const char *host : {"", "a b", "x\"><script>alert(1)</script>", "x/y", "x:99999"}) {
    const QByteArray page = site.Page("/recenteqs_sub/", host).value();
    EXPECT_TRUE(page.contains("\"http://alaska.localhost:8080/recenteqs/Quakes/ak1.html\"")) << host;
    EXPECT_FALSE(page.contains("<script")) << host;
  }
}

TEST(Site, LinksOtherHostsBesideTheNameOfEachRequest) {
  Site site;
  site.SetPort(8080);
  site.SetCatalogue(std::make_shared<Catalogue>(std::vector<Event>{Castaic()}), {.origin = "a test"});
  struct Case {
    const char *host;
    const char *root;
  };
  for (int round = 0; round < 2; ++round)
    for (const auto &[host, root] :
         {Case{"quakes.school.example:8080", "http://memphis.quakes.school.example:8080"},
          Case{"southern.quakes.school.example", "http://memphis.quakes.school.example"},
          Case{"localhost:17650", "http://memphis.localhost:17650"}, Case{"", "http://memphis.localhost:8080"}})
      EXPECT_TRUE(site.Page("/", host).value().contains(QByteArray("\"") + root + "/recenteqs/Quakes/quakes0.html\""))
          << host;
  const QByteArray event = "/recenteqs/Quakes/ci37868143.html";
  const QByteArray list = "/recenteqs/Maps/Los_Angeles.html\"";
  EXPECT_TRUE(site.Page(event, "southern.school.example").value().contains("href=\"" + list));
  EXPECT_TRUE(
      site.Page(event, "alaska.school.example").value().contains("href=\"http://southern.school.example" + list));
}

TEST(Site, WritesAPageWithoutLinksToHostsOnceForAllNames) {
  Site site;
  site.SetPort(8080);
  site.SetCatalogue(std::make_shared<Catalogue>(std::vector<Event>{Castaic()}), {});
  const QByteArray map = "/recenteqs/Maps/118-34.html";
  const QByteArray one = site.Page(map, "one.example").value();
  const QByteArray other = site.Page(map, "other.example").value();
  EXPECT_EQ(one.constData(), other.constData());
}

TEST(Site, ServesNoPageUnderThePathOfAKeptOneAndAHost) {
  Site site;
  site.SetCatalogue(std::make_shared<Catalogue>(std::vector<Event>{Kodiak()}), {.origin = "a test"});
  EXPECT_TRUE(site.Page("/recenteqs_sub/", "alaska.localhost").has_value());
  for (const char *path : {"/recenteqs_sub/alaska.localhost", "/recenteqs_sub/ alaska.localhost", "/recenteqs_sub"})
    EXPECT_EQ(site.Page(path, "alaska.localhost"), std::nullopt) << path;
}

TEST(Site, FindsAnEventUnderAnEscapedAddress) {
  Site site;
  Event event = Kodiak();
  event.id = "html";
  site.SetCatalogue(std::make_shared<Catalogue>(std::vector<Event>{event}), {.origin = "a test"});
  const QByteArray page = site.Page("/recenteqs_sub/", "alaska.localhost").value();
  const std::string link = plain::ScanRegionTable(page.toStdString()).rows.at(0)[plain::region_column::link];
  const QByteArray path = QByteArray::fromStdString(link.substr(link.find("/recenteqs")));
  EXPECT_TRUE(site.Page(path, "alaska.localhost").has_value()) << link;
  EXPECT_FALSE(site.Page("/recenteqs/Quakes/%2e%2e%2fhtml.html", "").has_value());
}

TEST(Site, CutsAQueryAndAFragmentOff) {
  Site site;
  for (const char *target :
       {"/recenteqs/Maps/1-2.html?x", "/recenteqs/Maps/1-2.html#x?y", "/recenteqs/Maps/1-2.html?a#b"})
    EXPECT_TRUE(site.Page(target, "").has_value()) << target;
}

}  // namespace
}  // namespace borvane::mirror
