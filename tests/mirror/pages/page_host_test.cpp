#include "pages/page_host.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

/// What a page on the host has for a link to the area.
QByteArray LinkOn(const QByteArray &host, std::string_view name) {
  const std::span<const Area> areas = Areas();
  const auto area = std::find_if(areas.begin(), areas.end(), [name](const Area &each) { return each.name == name; });
  return PageHost(host, 8080).LinkTo(*area, areas);
}

const QByteArray quakes = "/recenteqs/Quakes/quakes0.html";

TEST(PageHost, LinksAreasBesideTheNameOfThePage) {
  struct Case {
    const char *host;
    const char *root;
  };
  for (const auto &[host, root] :
       {Case{"localhost:17650", "http://memphis.localhost:17650"},
        Case{"southern.localhost:17650", "http://memphis.localhost:17650"},
        Case{"worldlist.localhost:17650", "http://memphis.localhost:17650"},
        Case{"maker.localhost", "http://memphis.localhost"},
        Case{"quakes.school.example:8080", "http://memphis.quakes.school.example:8080"},
        Case{"Alaska.Quakes.School.example", "http://memphis.quakes.school.example"},
        Case{"alaskan.school.example", "http://memphis.alaskan.school.example"},
        Case{"school:80", "http://memphis.school:80"}, Case{"southern:80", "http://memphis:80"}})
    EXPECT_EQ(LinkOn(host, "Central US"), root + quakes) << host;
}

TEST(PageHost, LinksAreasByTheirPathsWhereItServesThem) {
  for (const char *host :
       {"localhost:17650", "quakes.school.example", "worldlist.localhost", "192.0.2.10:8080", "", "::"})
    EXPECT_EQ(LinkOn(host, "Parkfield, San Andreas Fault"), "/recenteqs/Maps/Parkfield.html") << host;
  EXPECT_EQ(LinkOn("northern.localhost", "Parkfield, San Andreas Fault"), "/recenteqs/Maps/Parkfield.html");
  EXPECT_EQ(LinkOn("southern.school.example:1", "Parkfield, San Andreas Fault"),
            "http://northern.school.example:1/recenteqs/Maps/Parkfield.html");
  EXPECT_EQ(LinkOn("memphis.school.example", "Central US"), quakes);
  EXPECT_EQ(LinkOn("memphis.school.example", "Pacific Northwest"), "http://pacificnorthwest.school.example" + quakes);
}

TEST(PageHost, TakesTheAddressOfThisComputerForLocalhost) {
  EXPECT_EQ(LinkOn("127.0.0.1:17650", "Central US"), "http://memphis.localhost:17650" + quakes);
  EXPECT_EQ(LinkOn("[::1]:17650", "Central US"), "http://memphis.localhost:17650" + quakes);
  EXPECT_EQ(LinkOn("[::1]", "Central US"), "http://memphis.localhost" + quakes);
}

TEST(PageHost, HasNoNamesBesideTheAddressOfAnotherComputer) {
  for (const char *host : {"192.0.2.10", "192.0.2.10:8080", "[2001:db8::1]", "[2001:db8::1]:8080", "[:::]"})
    EXPECT_EQ(LinkOn(host, "Central US"), "") << host;
}

TEST(PageHost, IsLocalhostAtThePortOfTheMirrorWhereTheRequestNamesNone) {
  for (const char *host : {"", "a b", "x\"><script>alert(1)</script>", "x/y", "x:99999", "x\ny"}) {
    EXPECT_EQ(LinkOn(host, "Central US"), "http://memphis.localhost:8080" + quakes) << host;
    EXPECT_EQ(PageHost(host, 8080).Key(), PageHost("localhost:8080", 1).Key()) << host;
  }
}

TEST(PageHost, HasAKeyForAllHostsWithTheSameLinks) {
  const auto key = [](const QByteArray &host) { return PageHost(host, 8080).Key(); };
  EXPECT_EQ(key("quakes.school.example"), key("Quakes.School.Example"));
  EXPECT_EQ(key("worldlist.school.example"), key("school.example"));
  EXPECT_NE(key("southern.school.example"), key("school.example"));
  EXPECT_NE(key("southern.school.example"), key("northern.school.example"));
  EXPECT_NE(key("quakes.school.example"), key("school.example"));
  EXPECT_NE(key("school.example:1"), key("school.example:2"));
  EXPECT_EQ(key("192.0.2.10"), key("192.0.2.11:80"));
}

}  // namespace
}  // namespace borvane::mirror
