#include "pages/site.h"

#include <memory>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

#include "pages/areas.h"
#include "support/mirror/sample_pages.h"

namespace borvane::mirror {
namespace {

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
