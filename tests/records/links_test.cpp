#include "records/links.h"

#include <gtest/gtest.h>

#include "support/failure_of.h"
#include "support/program/bar_rig.h"

namespace borvane {
namespace {

constexpr int object_not_set = 91;

std::string MapPage() {
  std::string address = "left over";
  OpenMapPage(address);
  return address;
}

/// A list of two rows with the links of `links`.
void ListLinks(const std::string &first, const std::string &second) {
  std::vector<std::string> one = BarRig::row("2.0", "Near");
  std::vector<std::string> two = BarRig::row("1.0", "Far");
  one[7] = first;
  two[7] = second;
  BarRig::list({one, two});
}

TEST(OpenMapPage, JoinsTheSelectedRowsLinkToTheSite) {
  BarRig rig;
  ListLinks("a/1.html", "b 2.html");
  EXPECT_EQ(MapPage(), southern + "/a/1.html") << "the first row added is the selected one";
  frmRecords->ListView1.ListItems.Choose(2);
  EXPECT_EQ(MapPage(), southern + "/b 2.html");
}

TEST(OpenMapPage, TakesTheAddressOfARowOfAlaskaAsItIs) {
  BarRig rig;
  conffrm->Combo2.Text = "All Alaska";
  BarRig::list({{"3.1", "noon", "near Nome", "http://alaska.localhost:17650/x y.html", "", "", "10"}});
  EXPECT_EQ(MapPage(), "http://alaska.localhost:17650/x y.html");
}

TEST(OpenMapPage, GoesByTheChosenAreaAndNotByTheRows) {
  RecordProperty("quirk", "links-go-by-the-chosen-area");
  BarRig rig;
  ListLinks("a/1.html", "b/2.html");
  conffrm->Combo2.Text = "All Alaska";
  EXPECT_EQ(MapPage(), "34.495N");
  for (const char *area : {"Intermountain West", "Worldwide 5+", "", "all alaska", "Puerto Rico"}) {
    conffrm->Combo2.Text = area;
    EXPECT_EQ(MapPage(), southern + "/a/1.html") << area;
  }
}

TEST(OpenMapPage, JoinsTheLinkToWhateverTheSharedAddressHolds) {
  RecordProperty("quirk", "link-behind-a-whole-address");
  BarRig rig;
  ListLinks("a/1.html", "b/2.html");
  Module1->SiteRoot = los_angeles;
  EXPECT_EQ(MapPage(), los_angeles + "a/1.html");
  EXPECT_EQ(GetLastEventUrl(), los_angeles + "a/1.html");
}

TEST(OpenMapPage, FailsWithoutASelectedRow) {
  BarRig rig;
  BarRig::list({});
  EXPECT_EQ(FailureOf(MapPage), object_not_set);
  rig.click(rig.open_long_bar().Label1(0));
  EXPECT_EQ(rig.trace({"error", "open"}), Lines{"error report 91 Object variable not set"});
}

TEST(GetLastEventUrl, JoinsTheFirstRowsLinkToTheSite) {
  BarRig rig;
  ListLinks("a/1.html", "b/2.html");
  frmRecords->ListView1.ListItems.Choose(2);
  EXPECT_EQ(GetLastEventUrl(), southern + "/a/1.html");
}

TEST(GetLastEventUrl, IsEmptyForALinkWithoutASlash) {
  BarRig rig;
  for (const char *link : {"1.html", "", "26.5"}) {
    ListLinks(link, "b/2.html");
    EXPECT_EQ(GetLastEventUrl(), "") << link;
  }
  ListLinks("/", "");
  EXPECT_EQ(GetLastEventUrl(), southern + "//");
}

TEST(GetLastEventUrl, IsEmptyForARowOfAlaska) {
  BarRig rig;
  conffrm->Combo2.Text = "All Alaska";
  BarRig::list({{"3.1", "noon", "near Nome", "http://alaska.localhost:17650/x.html", "", "", "10"}});
  EXPECT_EQ(GetLastEventUrl(), "");
}

TEST(GetLastEventUrl, FailsForAnEmptyList) {
  const BarRig rig;
  BarRig::list({});
  EXPECT_EQ(FailureOf(GetLastEventUrl), subscript);
}

}  // namespace
}  // namespace borvane
