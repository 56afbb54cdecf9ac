#include "pages/browser_pages.h"

#include <gtest/gtest.h>

#include "catalogue/sample.h"
#include "pages/index_page.h"
#include "pages/site.h"
#include "support/mirror/sample_pages.h"
#include "support/plain_scanners.h"

namespace borvane::mirror {
namespace {

const QByteArray world = "/recenteqsww/";
const QByteArray archive = "/research/strongmotion/effects/shake/archive/";
const QByteArray felt_forms[] = {"/shake/ca/html/unknown_form.html", "/shake/ous/html/unknown_form.html"};

Event EventOfMagnitude(const QString &id, std::optional<double> magnitude) {
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
  const plain::ScanResult scan = plain::ScanQuakesList(page.toStdString());
  EXPECT_EQ(scan.failure, 0);
  std::vector<std::string> links;
  for (const plain::Row &row : scan.rows)
    links.push_back(row[plain::column::link]);
  return links;
}

TEST(BrowserPage, ListsTheEventsOfTheWorld) {
  const Catalogue catalogue({EventOfMagnitude("a1", 2.0), EventOfMagnitude("b2", 6.0), EventOfMagnitude("c3", {})});
  EXPECT_EQ(LinksOf(BrowserPage(world, catalogue).value()),
            (std::vector<std::string>{"recenteqs/Quakes/a1.html", "recenteqs/Quakes/b2.html"}));
}

TEST(BrowserPage, ListsTheStrongEventsInTheArchive) {
  const Catalogue catalogue({EventOfMagnitude("a1", 4.99), EventOfMagnitude("b2", 5.0), EventOfMagnitude("c3", {}),
                             EventOfMagnitude("d4", 7.5)});
  EXPECT_EQ(LinksOf(BrowserPage(archive, catalogue).value()),
            (std::vector<std::string>{"recenteqs/Quakes/b2.html", "recenteqs/Quakes/d4.html"}));
}

TEST(BrowserPage, HasSomethingToShowInTheSample) {
  const Catalogue catalogue(SampleEvents());
  EXPECT_GE(LinksOf(BrowserPage(world, catalogue).value()).size(), 1000U);
  EXPECT_GE(LinksOf(BrowserPage(archive, catalogue).value()).size(), 10U);
}

TEST(BrowserPage, LeadsToThePublicPagesOfToday) {
  const auto leads_to = [](const QByteArray &path, const char *address) {
    return BrowserPage(path, Catalogue()).value().contains(QByteArray("<a href=\"") + address + "\">");
  };
  EXPECT_TRUE(leads_to(world, "https://earthquake.usgs.gov/earthquakes/map/"));
  EXPECT_TRUE(leads_to(archive, "https://www.strongmotioncenter.org/"));
  EXPECT_TRUE(leads_to(archive, "https://earthquake.usgs.gov/data/shakemap/"));
  for (const QByteArray &form : felt_forms) {
    EXPECT_TRUE(leads_to(form, "https://earthquake.usgs.gov/earthquakes/eventpage/tellus"));
    EXPECT_TRUE(leads_to(form, "https://earthquake.usgs.gov/data/dyfi/"));
  }
}

TEST(BrowserPage, IsWellFormed) {
  for (const QByteArray &path : {world, archive, felt_forms[0], felt_forms[1]})
    EXPECT_EQ(FaultOf(BrowserPage(path, Catalogue(SampleEvents())).value()), "") << path.constData();
}

TEST(BrowserPage, IsNothingForEveryOtherPath) {
  for (const char *path : {"/", "/recenteqsww", "/recenteqsww/x", "/research/strongmotion/", "/shake/ca/html/"})
    EXPECT_EQ(BrowserPage(path, Catalogue()), std::nullopt) << path;
}

TEST(Site, ServesThePagesForTheBrowserOnTheirHostsAndAtTheBareAddress) {
  Site site;
  for (const char *host :
       {"worldlist.localhost:17650", "strongmotion.localhost", "feltforms.localhost", "127.0.0.1:17650"}) {
    EXPECT_TRUE(site.Page(world, host).has_value()) << host;
    EXPECT_TRUE(site.Page(archive + "?x", host).has_value()) << host;
    EXPECT_TRUE(site.Page(felt_forms[0], host).has_value()) << host;
    EXPECT_TRUE(site.Page(felt_forms[1], host).has_value()) << host;
  }
}

TEST(IndexPage, LinksThePagesForTheBrowser) {
  const QByteArray page = IndexPage(Catalogue(), {.origin = "nothing"}, PageHost("", 8080));
  EXPECT_TRUE(page.contains(QByteArray("href=\"") + world + '"'));
  EXPECT_TRUE(page.contains(QByteArray("href=\"") + archive + '"'));
  EXPECT_TRUE(page.contains(QByteArray("href=\"") + felt_forms[1] + '"'));
}

}  // namespace
}  // namespace borvane::mirror
