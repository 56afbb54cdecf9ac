#include "pages/areas.h"

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

TEST(Hosts, AreToldApartByTheLabelInFrontOfLocalhost) {
  EXPECT_EQ(KindOfHost("national.localhost:17650"), HostKind::National);
  EXPECT_EQ(KindOfHost("southern.localhost:17650"), HostKind::Southern);
  EXPECT_EQ(KindOfHost("northern.localhost:17650"), HostKind::Northern);
  EXPECT_EQ(KindOfHost("pacificnorthwest.localhost:17650"), HostKind::PacificNorthwest);
  EXPECT_EQ(KindOfHost("alaska.localhost:17650"), HostKind::Alaska);
  EXPECT_EQ(KindOfHost("utah.localhost:17650"), HostKind::Utah);
  EXPECT_EQ(KindOfHost("memphis.localhost:17650"), HostKind::Memphis);
  EXPECT_EQ(KindOfHost("northeastern.localhost:17650"), HostKind::Northeastern);
  EXPECT_EQ(KindOfHost("puertorico.localhost:17650"), HostKind::PuertoRico);
  EXPECT_EQ(KindOfHost("maker.localhost:17650"), HostKind::Maker);
}

TEST(Hosts, MayBeWrittenInAnyCaseAndWithoutAPort) {
  EXPECT_EQ(KindOfHost("Memphis.LocalHost"), HostKind::Memphis);
  EXPECT_EQ(KindOfHost("MEMPHIS.localhost:80"), HostKind::Memphis);
}

TEST(Hosts, AreUnknownUnderAnyOtherName) {
  for (const char *host : {"", "localhost", "127.0.0.1:17650", "[::1]:17650", "memphis", "memphis.localhost.example",
                           "x.memphis.localhost", ".localhost", "memphislocalhost"})
    EXPECT_EQ(KindOfHost(host), std::nullopt) << host;
}

TEST(Areas, StandAtTheirPathsOnTheirHosts) {
  const auto is_served = [](HostKind host, const char *path) { return FindArea(path, host) != nullptr; };
  EXPECT_TRUE(is_served(HostKind::Southern, "/recenteqs/Maps/Los_Angeles.html"));
  EXPECT_TRUE(is_served(HostKind::Southern, "/recenteqs/Maps/San_Francisco.html"));
  EXPECT_TRUE(is_served(HostKind::Southern, "/recenteqs/Maps/Long_Valley.html"));
  EXPECT_TRUE(is_served(HostKind::Southern, "/recenteqs/Maps/116-33.html"));
  EXPECT_TRUE(is_served(HostKind::Southern, "/recenteqs/Maps/117-33.html"));
  EXPECT_TRUE(is_served(HostKind::Southern, "/recenteqs/Maps/121-37.html"));
  EXPECT_TRUE(is_served(HostKind::Northern, "/recenteqs/Maps/Parkfield.html"));
  EXPECT_TRUE(is_served(HostKind::PacificNorthwest, "/recenteqs/Quakes/quakes0.html"));
  EXPECT_TRUE(is_served(HostKind::Memphis, "/recenteqs/Quakes/quakes0.html"));
}

TEST(Areas, ThatShareAPathAreToldApartByTheHost) {
  EXPECT_STREQ(FindArea("/recenteqs/Quakes/quakes0.html", HostKind::Memphis)->name, "Central US");
  EXPECT_STREQ(FindArea("/recenteqs/Quakes/quakes0.html", HostKind::PacificNorthwest)->name, "Pacific Northwest");
  EXPECT_EQ(FindArea("/recenteqs/Quakes/quakes0.html", HostKind::Southern), nullptr);
}

TEST(Areas, AreServedToAnUnknownHostWhereOnlyOneHasThePath) {
  EXPECT_STREQ(FindArea("/recenteqs/Maps/Parkfield.html", std::nullopt)->name, "Parkfield, San Andreas Fault");
  EXPECT_EQ(FindArea("/recenteqs/Quakes/quakes0.html", std::nullopt), nullptr);
}

TEST(Areas, HoldTheEventsOnTheEdgesOfTheirBoxes) {
  const Box box = {.south = 33, .north = 35, .west = -119, .east = -117};
  EXPECT_TRUE(box.Contains(33, -119));
  EXPECT_TRUE(box.Contains(35, -117));
  EXPECT_FALSE(box.Contains(32.999, -118));
  EXPECT_FALSE(box.Contains(35.001, -118));
  EXPECT_FALSE(box.Contains(34, -119.001));
  EXPECT_FALSE(box.Contains(34, -116.999));
}

}  // namespace
}  // namespace borvane::mirror
