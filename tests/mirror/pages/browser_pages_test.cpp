#include "pages/browser_pages.h"

#include <gtest/gtest.h>

#include "catalogue/sample.h"
#include "pages/index_page.h"
#include "pages/site.h"
#include "support/mirror/quakes_list_reader.h"

namespace borvane::mirror {
namespace {

const QByteArray world = "/recenteqsww/";
const QByteArray archive = "/research/strongmotion/effects/shake/archive/";

Event EventOf(const QString &id, std::optional<double> magnitude) {
  return {.id = id,
          .origin_time = 1517966773000,
          .latitude = 1,
          .longitude = 2,
          .depth = 3,
          .magnitude = magnitude,
          .place = "X",
          .network = "us",
          .kind = "earthquake"};
}

/// The links of the rows of a page, which name its events.
std::vector<std::string> LinksOf(const QByteArray &page) {
  const ListReading reading = ReadQuakesList(page.toStdString());
  EXPECT_EQ(reading.fault, "");
  std::vector<std::string> links;
  for (const ListRow &row : reading.rows)
    links.push_back(row.link);
  return links;
}

TEST(BrowserPage, ListsTheEventsOfTheWorld) {
  const Catalogue catalogue({EventOf("a1", 2.0), EventOf("b2", 6.0), EventOf("c3", {})});
  EXPECT_EQ(LinksOf(BrowserPage(world, catalogue).value()),
            (std::vector<std::string>{"recenteqs/Quakes/a1.html", "recenteqs/Quakes/b2.html"}));
}

TEST(BrowserPage, ListsTheStrongEventsInTheArchive) {
  const Catalogue catalogue({EventOf("a1", 4.99), EventOf("b2", 5.0), EventOf("c3", {}), EventOf("d4", 7.5)});
  EXPECT_EQ(LinksOf(BrowserPage(archive, catalogue).value()),
            (std::vector<std::string>{"recenteqs/Quakes/b2.html", "recenteqs/Quakes/d4.html"}));
}

TEST(BrowserPage, HasSomethingToShowInTheSample) {
  const Catalogue catalogue(SampleEvents());
  EXPECT_GE(LinksOf(BrowserPage(world, catalogue).value()).size(), 1000U);
  EXPECT_GE(LinksOf(BrowserPage(archive, catalogue).value()).size(), 10U);
}

TEST(BrowserPage, IsNothingForEveryOtherPath) {
  for (const char *path : {"/", "/recenteqsww", "/recenteqsww/x", "/research/strongmotion/"})
    EXPECT_EQ(BrowserPage(path, Catalogue()), std::nullopt) << path;
}

TEST(Site, ServesThePagesForTheBrowserOnTheirHostsAndAtTheBareAddress) {
  Site site;
  for (const char *host : {"worldlist.localhost:17650", "strongmotion.localhost", "127.0.0.1:17650"}) {
    EXPECT_TRUE(site.Page(world, host).has_value()) << host;
    EXPECT_TRUE(site.Page(archive + "?x", host).has_value()) << host;
  }
}

TEST(IndexPage, LinksThePagesForTheBrowser) {
  const QByteArray page = IndexPage(Catalogue(), "nothing", 8080);
  EXPECT_TRUE(page.contains("href=\"http://worldlist.localhost:8080" + world + '"'));
  EXPECT_TRUE(page.contains("href=\"http://strongmotion.localhost:8080" + archive + '"'));
}

}  // namespace
}  // namespace borvane::mirror
