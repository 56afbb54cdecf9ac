#include "pages/areas.h"

#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>

namespace borvane::mirror {
namespace {

TEST(Areas, AreAtTheirPathsOnTheirHosts) {
  const auto is_served = [](Endpoint host, const char *path) { return FindArea(path, host) != nullptr; };
  EXPECT_TRUE(is_served(Endpoint::Southern, "/recenteqs/Maps/Los_Angeles.html"));
  EXPECT_TRUE(is_served(Endpoint::Southern, "/recenteqs/Maps/San_Francisco.html"));
  EXPECT_TRUE(is_served(Endpoint::Southern, "/recenteqs/Maps/Long_Valley.html"));
  EXPECT_TRUE(is_served(Endpoint::Southern, "/recenteqs/Maps/116-33.html"));
  EXPECT_TRUE(is_served(Endpoint::Southern, "/recenteqs/Maps/117-33.html"));
  EXPECT_TRUE(is_served(Endpoint::Southern, "/recenteqs/Maps/121-37.html"));
  EXPECT_TRUE(is_served(Endpoint::Northern, "/recenteqs/Maps/Parkfield.html"));
  EXPECT_TRUE(is_served(Endpoint::PacificNorthwest, "/recenteqs/Quakes/quakes0.html"));
  EXPECT_TRUE(is_served(Endpoint::Memphis, "/recenteqs/Quakes/quakes0.html"));
  EXPECT_TRUE(is_served(Endpoint::Alaska, "/recenteqs_sub/"));
  EXPECT_TRUE(is_served(Endpoint::Utah, "/req2webdir/recenteqs/Quakes/quakes0.html"));
  EXPECT_TRUE(is_served(Endpoint::Northeastern, "/LCSN/recenteqs/Quakes/quakes0.html"));
  EXPECT_TRUE(is_served(Endpoint::National, "/eqcenter/recenteqsww/Quakes/quakes_all.php"));
  EXPECT_TRUE(is_served(Endpoint::National, "/eqcenter/recenteqsww/Quakes/quakes_big.php"));
  EXPECT_TRUE(is_served(Endpoint::PuertoRico, "/recenteqs/eqs_all.htm"));
  EXPECT_EQ(Areas().size(), 15U);
}

TEST(Areas, HaveTheirNamesAndBoxes) {
  std::ostringstream table;
  for (const Area &area : Areas())
    table << area.name << ": " << area.box.south << ' ' << area.box.north << ' ' << area.box.west << ' '
          << area.box.east << '\n';
  EXPECT_EQ(table.str(),
            "Los Angeles: 33 35 -119.5 -116.5\n"
            "San Francisco: 36.8 38.8 -123.5 -121.2\n"
            "Long Valley: 37 38.3 -119.6 -118\n"
            "El Centro: 32 34 -117 -115\n"
            "San Diego: 32 34 -118 -116\n"
            "San Jose, Salinas, Monterey: 36 38 -122 -120\n"
            "Pacific Northwest: 45.5 49.2 -124.8 -119.5\n"
            "Alaska: 50 72 170 -130\n"
            "Intermountain West: 34 49 -116 -102\n"
            "Parkfield, San Andreas Fault: 35.4 36.7 -121.2 -119.8\n"
            "Central US: 33 39.5 -95 -84\n"
            "Northeastern US and Canada: 38 52 -84 -64\n"
            "World, Magnitude 2.5 and Above: -90 90 -180 180\n"
            "World, Magnitude 5 and Above: -90 90 -180 180\n"
            "Puerto Rico: 16.5 20.5 -69.5 -63.5\n");
}

TEST(AreasWith, HasTheBoxesOfAConfigurationInPlaceOfItsOwn) {
  const std::vector<Area> areas = AreasWith({{"Los Angeles", {1, 2, 3, 4}}, {"Atlantis", {5, 6, 7, 8}}});
  ASSERT_EQ(areas.size(), Areas().size());
  for (std::size_t i = 0; i < areas.size(); ++i)
    EXPECT_EQ(areas[i].box, i == 0 ? (Box{1, 2, 3, 4}) : Areas()[i].box) << areas[i].name;
  EXPECT_EQ(FindArea("/recenteqs/Maps/Los_Angeles.html", Endpoint::Southern, areas)->box.north, 2);
}

TEST(Areas, HaveTheFormOfTheirScanners) {
  const auto form_of = [](Endpoint host, const char *path) { return FindArea(path, host)->form; };
  EXPECT_EQ(form_of(Endpoint::Alaska, "/recenteqs_sub/"), ListForm::Region);
  EXPECT_EQ(form_of(Endpoint::Utah, "/req2webdir/recenteqs/Quakes/quakes0.html"), ListForm::MapList);
  EXPECT_EQ(form_of(Endpoint::Northeastern, "/LCSN/recenteqs/Quakes/quakes0.html"), ListForm::MapList);
  EXPECT_EQ(form_of(Endpoint::National, "/eqcenter/recenteqsww/Quakes/quakes_all.php"), ListForm::World);
  EXPECT_EQ(form_of(Endpoint::National, "/eqcenter/recenteqsww/Quakes/quakes_big.php"), ListForm::World);
  EXPECT_EQ(form_of(Endpoint::PuertoRico, "/recenteqs/eqs_all.htm"), ListForm::MapAnchor);
  EXPECT_EQ(
      std::count_if(Areas().begin(), Areas().end(), [](const Area &area) { return area.form == ListForm::Quakes; }), 9);
}

TEST(Areas, HoldTheEventsOfTheirMagnitudes) {
  Event event;
  event.latitude = 18;
  event.longitude = -66;
  const Area *all = FindArea("/eqcenter/recenteqsww/Quakes/quakes_all.php", Endpoint::National);
  const Area *big = FindArea("/eqcenter/recenteqsww/Quakes/quakes_big.php", Endpoint::National);
  const Area *island = FindArea("/recenteqs/eqs_all.htm", Endpoint::PuertoRico);
  for (const Area *area : {all, big, island})
    EXPECT_FALSE(area->Holds(event)) << area->name << ": an event without a magnitude";
  for (const auto &[magnitude, in_all, in_big] : {std::tuple(-9.9, false, false),
                                                  {2.49, false, false},
                                                  {2.5, true, false},
                                                  {4.99, true, false},
                                                  {5.0, true, true}}) {
    event.magnitude = magnitude;
    EXPECT_EQ(all->Holds(event), in_all) << magnitude;
    EXPECT_EQ(big->Holds(event), in_big) << magnitude;
    EXPECT_TRUE(island->Holds(event)) << magnitude;
  }
  event.latitude = 21;
  EXPECT_FALSE(island->Holds(event));
}

TEST(ListPaths, AreThoseOfEveryNetwork) {
  for (const char *path :
       {"/recenteqs/Maps/Los_Angeles.html", "/recenteqs/Maps/116-33.html", "/recenteqs/Maps/None.html",
        "/recenteqs/Quakes/quakes0.html", "/recenteqs_sub/", "/recenteqs/eqs_all.htm",
        "/req2webdir/recenteqs/Quakes/quakes0.html", "/LCSN/recenteqs/Quakes/quakes0.html",
        "/eqcenter/recenteqsww/Quakes/quakes_all.php", "/eqcenter/recenteqsww/Quakes/quakes_big.php"})
    EXPECT_TRUE(IsListPath(path)) << path;
  for (const char *path : {"", "/", "/recenteqs/Quakes/", "/recenteqs/Quakes/ci1.html", "/recenteqs/Quakes/quakes0.htm",
                           "/recenteqs/Maps", "/borvane/", "/x/recenteqs/Maps/116-33.html"})
    EXPECT_FALSE(IsListPath(path)) << path;
}

TEST(Areas, ThatShareAPathAreToldApartByTheHost) {
  EXPECT_STREQ(FindArea("/recenteqs/Quakes/quakes0.html", Endpoint::Memphis)->name, "Central US");
  EXPECT_STREQ(FindArea("/recenteqs/Quakes/quakes0.html", Endpoint::PacificNorthwest)->name, "Pacific Northwest");
  EXPECT_EQ(FindArea("/recenteqs/Quakes/quakes0.html", Endpoint::Southern), nullptr);
}

TEST(Areas, AreServedToAnUnknownHostWhereOnlyOneHasThePath) {
  EXPECT_STREQ(FindArea("/recenteqs/Maps/Parkfield.html", std::nullopt)->name, "Parkfield, San Andreas Fault");
  EXPECT_EQ(FindArea("/recenteqs/Quakes/quakes0.html", std::nullopt), nullptr);
}

TEST(Areas, MayLieAcrossTheDateLine) {
  const Box box = {.south = 50, .north = 72, .west = 170, .east = -130};
  for (const double longitude : {170.0, 179.9, 180.0, -180.0, -150.0, -130.0})
    EXPECT_TRUE(box.Contains(60, longitude)) << longitude;
  for (const double longitude : {169.9, 0.0, -129.9})
    EXPECT_FALSE(box.Contains(60, longitude)) << longitude;
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
