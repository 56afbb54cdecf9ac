#include "feed/area.h"

#include <gtest/gtest.h>

#include "settings/conffrm.h"
#include "support/program/pages.h"
#include "support/rig.h"

namespace borvane {
namespace {

struct AreaCase {
  int position;
  const char *text;
  const char *address;  // null for a heading
  Scanner scan;         // of the page, or of a page chosen by its coordinates while this is the text
};

void PrintTo(const AreaCase &area, std::ostream *stream) { *stream << area.text; }

constexpr AreaCase catalogue[] = {
    {0, "* CALIFORNIA (State)", nullptr, ScanQuakesList},
    {1, "Los Angeles", "http://southern.localhost:17650/recenteqs/Maps/Los_Angeles.html", ScanQuakesList},
    {2, "San Francisco Area", "http://southern.localhost:17650/recenteqs/Maps/San_Francisco.html", ScanQuakesList},
    {3, "Long Valley Area", "http://southern.localhost:17650/recenteqs/Maps/Long_Valley.html", ScanQuakesList},
    {4, "El Centro, CA", "http://southern.localhost:17650/recenteqs/Maps/116-33.html", ScanQuakesList},
    {5, "San Diego, CA", "http://southern.localhost:17650/recenteqs/Maps/117-33.html", ScanQuakesList},
    {6, "San Jose, CA", "http://southern.localhost:17650/recenteqs/Maps/121-37.html", ScanQuakesList},
    {7, "Salinas, CA", "http://southern.localhost:17650/recenteqs/Maps/121-37.html", ScanQuakesList},
    {8, "San Benito, CA", "http://southern.localhost:17650/recenteqs/Maps/121-37.html", ScanQuakesList},
    {9, "San Juan Bautista, CA", "http://southern.localhost:17650/recenteqs/Maps/121-37.html", ScanQuakesList},
    {10, "Monterey, CA", "http://southern.localhost:17650/recenteqs/Maps/121-37.html", ScanQuakesList},
    {11, "* WASHINGTON (State)", nullptr, ScanQuakesList},
    {12, "Seattle Area", "http://pacificnorthwest.localhost:17650/recenteqs/Quakes/quakes0.html", ScanQuakesList},
    {13, "* ALASKA", nullptr, ScanQuakesList},
    {14, "All Alaska", "http://alaska.localhost:17650/recenteqs_sub/", ScanRegionTable},
    {15, "* UT, ID, AZ, NV, WY, CO, MO, NM", nullptr, ScanQuakesList},
    {16, "Intermountain West", "http://utah.localhost:17650/req2webdir/recenteqs/Quakes/quakes0.html", ScanMapList},
    {17, "San Andreas (fault)", "http://northern.localhost:17650/recenteqs/Maps/Parkfield.html", ScanQuakesList},
    {18, "* KY, NY, TN, MO, KS, OH, SC, AL, AR, PA", nullptr, ScanQuakesList},
    {19, "Central US", "http://memphis.localhost:17650/recenteqs/Quakes/quakes0.html", ScanQuakesList},
    {20, "* NY, QUE, ONT, NH, VT, ME, PA", nullptr, ScanQuakesList},
    {21, "NorthEastern", "http://northeastern.localhost:17650/LCSN/recenteqs/Quakes/quakes0.html", ScanMapList},
    {22, "Worlwide <5", "http://national.localhost:17650/eqcenter/recenteqsww/Quakes/quakes_all.php", ScanWorldList},
    {23, "Worldwide 5+", "http://national.localhost:17650/eqcenter/recenteqsww/Quakes/quakes_big.php", ScanWorldList},
    {24, "Puerto Rico", "http://puertorico.localhost:17650/recenteqs/eqs_all.htm", ScanMapAnchorList},
};

class AreaAt : public testing::TestWithParam<AreaCase> {};

TEST_P(AreaAt, HasItsPlaceInTheListAndItsPage) {
  const AreaCase &area = GetParam();
  Rig rig;
  rig.start();
  EXPECT_EQ(conffrm->Combo2.List(area.position), area.text);
  conffrm->Combo2.Text = area.text;
  Module1->SiteRoot = "http://before/";
  GetAreaUrl();
  EXPECT_EQ(Module1->SiteRoot, area.address == nullptr ? "http://before/" : area.address);
}

TEST_P(AreaAt, IsAppliedWhenItIsSelectedUnlessItIsAHeading) {
  const AreaCase &area = GetParam();
  Rig rig;
  rig.store()["Area"] = "Los Angeles";
  rig.start();
  Module1->SiteRoot = "http://before/";
  Module1->RefreshCount = 33;
  rig.choose(conffrm->Combo2, area.text);
  const bool is_heading = area.address == nullptr;
  EXPECT_EQ(conffrm->Combo2.Text(), is_heading ? "" : area.text);
  EXPECT_EQ(rig.store()["Area"], is_heading ? "Los Angeles" : area.text);
  EXPECT_EQ(Module1->SiteRoot, is_heading ? "http://before/" : area.address);
  EXPECT_EQ(Module1->RefreshCount, is_heading ? 33 : 699);
}

TEST_P(AreaAt, IsReadByItsScanner) { EXPECT_EQ(ScannerOf(GetParam().text), GetParam().scan); }

INSTANTIATE_TEST_SUITE_P(Catalogue, AreaAt, testing::ValuesIn(catalogue), [](const auto &area) {
  return (area.param.position < 10 ? "Position0" : "Position") + std::to_string(area.param.position);
});

TEST(Combo2, HoldsTwentyFiveEntriesAndAnEmptyText) {
  Rig rig;
  EXPECT_EQ(conffrm->Combo2.ListCount(), 25);
  EXPECT_EQ(conffrm->Combo2.Text(), "");
  EXPECT_EQ(conffrm->Combo2.ToolTipText(), "Area Select");
}

TEST(Combo2, KeepsTheMisspeltEntryThatStoredAreasName) {
  RecordProperty("quirk", "misspelt-worldwide-entry");
  Rig rig;
  rig.store()["Area"] = "Worlwide <5";
  rig.start();
  EXPECT_EQ(Module1->AreaIndex, 22);
  conffrm->Combo2.Text = "Worldwide <5";
  Module1->SiteRoot = "http://before/";
  GetAreaUrl();
  EXPECT_EQ(Module1->SiteRoot, "http://before/") << "the correct spelling is not an entry";
}

TEST(Combo2, StoresTheAreaAfterItsAddressIsFoundAndBeforeTheCountIsSet) {
  RecordProperty("quirk", "unreachable-threshold-ends-the-program");
  Rig rig;
  rig.start();
  conffrm->Text2.Text = "40000";
  rig.clear_trace();
  rig.choose(conffrm->Combo2, "Seattle Area");
  EXPECT_EQ(rig.trace({"read", "write"}), (Lines{"read Hosts\\PacificNorthwest", "write Area=Seattle Area"}));
  EXPECT_EQ(rig.end_status(), 1) << "the threshold minus 1 does not fit 16 bits";
}

TEST(Combo2, SetsTheCountToTheRoundedThresholdMinusOne) {
  for (const auto &[threshold, count] : std::initializer_list<std::pair<const char *, int>>{
           {"700", 699}, {"65", 64}, {"", -1}, {"abc", -1}, {"2.5", 2}, {"3.5", 2}, {"32768", 32767}}) {
    Rig rig;
    rig.start();
    conffrm->Text2.Text = threshold;
    rig.choose(conffrm->Combo2, "Los Angeles");
    EXPECT_EQ(Module1->RefreshCount, count) << threshold;
  }
}

TEST(Combo2, EndsTheProgramWhenACoordinateIsOutOfRange) {
  Rig rig;
  rig.start();
  conffrm->Text6(1).Text = "32768";
  rig.clear_trace();
  rig.choose(conffrm->Combo2, "Los Angeles");
  EXPECT_EQ(rig.end_status(), 1);
  EXPECT_TRUE(rig.trace({"write"}).empty());
}

/// The address for these coordinates, with nothing chosen.
std::string AddressFor(std::string_view latitude, std::string_view longitude) {
  conffrm->Text6(0).Text = latitude;
  conffrm->Text6(1).Text = longitude;
  GetAreaUrl();
  return Module1->SiteRoot;
}

TEST(GetAreaUrl, UsesThePageNamedByTheCoordinatesWhenNoAreaIsChosen) {
  Rig rig;
  EXPECT_EQ(AddressFor("116", "33"), southern + "/recenteqs/Maps/116-33.html");
  EXPECT_EQ(AddressFor("", ""), southern + "/recenteqs/Maps/0-0.html");
}

TEST(GetAreaUrl, RoundsAHalfToEven) {
  Rig rig;
  EXPECT_EQ(AddressFor("116.5", "33.5"), southern + "/recenteqs/Maps/116-34.html");
  EXPECT_EQ(AddressFor("117.5", "33.4"), southern + "/recenteqs/Maps/118-33.html");
}

TEST(GetAreaUrl, ReadsTheNumericPrefixOfTheCoordinates) {
  Rig rig;
  EXPECT_EQ(AddressFor(" 116W", "N33"), southern + "/recenteqs/Maps/116-0.html");
}

TEST(GetAreaUrl, KeepsTheMinusSignOfACoordinate) {
  Rig rig;
  EXPECT_EQ(AddressFor("-116", "33"), southern + "/recenteqs/Maps/-116-33.html");
  EXPECT_EQ(AddressFor("116", "-33"), southern + "/recenteqs/Maps/116--33.html");
}

TEST(GetAreaUrl, UsesTheBoxesInTheirOwnOrder) {
  RecordProperty("quirk", "coordinates-in-the-order-of-the-boxes");
  Rig rig;
  EXPECT_EQ(conffrm->Label1(9).Caption(), "Latitude ");
  EXPECT_EQ(conffrm->Label1(10).Caption(), "Longitude");
  EXPECT_EQ(AddressFor("33", "116"), southern + "/recenteqs/Maps/33-116.html")
      << "the names of the pages begin with the longitude";
}

TEST(GetAreaUrl, PrefersTheCoordinatesWhileLatLongIsTicked) {
  Rig rig;
  conffrm->Combo2.Text = "Seattle Area";
  conffrm->Check4.Value = 1;
  EXPECT_EQ(AddressFor("116", "33"), southern + "/recenteqs/Maps/116-33.html");
  conffrm->Check4.Value = 2;
  EXPECT_NE(AddressFor("116", "33"), southern + "/recenteqs/Maps/116-33.html");
}

TEST(GetAreaUrl, FailsForCoordinatesBeyondSixteenBitsInEveryMode) {
  RecordProperty("quirk", "coordinates-read-in-every-mode");
  Rig rig;
  conffrm->Combo2.Text = "Seattle Area";
  Module1->SiteRoot = "http://before/";
  for (const auto &[latitude, longitude] : std::initializer_list<std::pair<const char *, const char *>>{
           {"32767.5", ""}, {"", "32768"}, {"-32769", ""}, {"1e300", ""}, {"", "1e999"}}) {
    try {
      AddressFor(latitude, longitude);
      FAIL() << "accepted " << latitude << ", " << longitude;
    } catch (const RuntimeError &error) {
      EXPECT_EQ(error.number(), static_cast<int>(Failure::Overflow));
    }
    EXPECT_EQ(Module1->SiteRoot, "http://before/");
  }
  EXPECT_NO_THROW(AddressFor("32767", "-32768"));
}

TEST(GetAreaUrl, LeavesTheAddressForATextThatIsNoEntry) {
  RecordProperty("quirk", "unknown-area-keeps-address");
  Rig rig;
  Module1->SiteRoot = southern + "/";
  for (const char *text : {"Atlantis", "los angeles", "Los Angeles ", "* ALASKA", " "}) {
    conffrm->Combo2.Text = text;
    GetAreaUrl();
    EXPECT_EQ(Module1->SiteRoot, southern + "/") << text;
  }
}

TEST(ScannerOf, ReturnsTheQuakesListForATextThatIsNoEntry) {
  for (const char *text : {"", "Atlantis", "all alaska", "All Alaska ", "Worldwide <5"})
    EXPECT_EQ(ScannerOf(text), ScanQuakesList) << text;
}

TEST(GetAreaUrl, UsesTheHostThatTheStoreNames) {
  Rig rig;
  rig.store().Put(hosts_key, "Southern", "quakes.example:8080");
  EXPECT_EQ(AddressFor("116", "33"), "http://quakes.example:8080/recenteqs/Maps/116-33.html");
}

TEST(SaveArea, StoresTheTextUnchanged) {
  Rig rig;
  conffrm->Combo2.Text = "Atlantis";
  SaveArea();
  EXPECT_EQ(rig.store()["Area"], "Atlantis");
}

}  // namespace
}  // namespace borvane
