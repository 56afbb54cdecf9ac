#include <gtest/gtest.h>

#include "scan/scanners.h"
#include "support/failure_of.h"
#include "support/program/page_rig.h"

namespace borvane {
namespace {

/// Scans a page in a program of its own.
struct ScanRig : PageRig {
  explicit ScanRig(std::string text) : PageRig(ScanMapAnchorList, std::move(text)) {}
};

using Texts = std::vector<std::string>;

const Texts row = {"2.7",
                   "2018/02/06",
                   "08:03:23",
                   "17.916N",
                   "66.738W",
                   "11.0",
                   "9 km SSW of Tallaboa, Puerto Rico",
                   "recenteqs/Quakes/pr2018037005.html"};

TEST(ScanMapAnchorList, ReadsTheRowsOfAPage) {
  const ScanRig rig(AnchorPage(AnchorRow() + AnchorRow("3.2", "24 km NNE of Punta Cana")));
  EXPECT_EQ(rig.failure, 0);
  ASSERT_EQ(Rows(), 2);
  EXPECT_EQ(RowTexts(1), row);
  EXPECT_EQ(frmRecords->ListView1.ListItems(2).Text, "3.2");
  EXPECT_EQ(SubItem(2, 6), "24 km NNE of Punta Cana");
}

TEST(ScanMapAnchorList, LeavesInThePageWhatItHasNotCut) {
  const ScanRig rig(AnchorPage(AnchorRow("2.7", "Tallaboa")));
  EXPECT_EQ(rig.page, "11.0</A> Tallaboa</TD></TR>\n</TABLE>\n") << "nothing is cut after the place";
}

TEST(ScanMapAnchorList, TakesAnyMapInFrontOfATagForARow) {
  RecordProperty("quirk", "map-anchor-marker-anywhere");
  const std::string rows = AnchorRow() + AnchorRow("3.2");
  const ScanRig with_link(
      "<TH>MAP</TH><TH>MAG</TH><TH>DATE (UTC)<A HREF=\"/help.html\">what is this list of? </A> DATE</TH>\n" + rows);
  EXPECT_EQ(with_link.failure, 0);
  ASSERT_EQ(Rows(), 3) << "the heading counts as a row";
  EXPECT_EQ(RowTexts(1), (Texts{"(UTC)", "what", "is", "this", "list", "of?", "DATE", "/help.html"}));
  EXPECT_EQ(RowTexts(2), row);
  const ScanRig plain("<TR><TH>MAP</TH><TH>MAG</TH></TR>\n" + rows);
  EXPECT_EQ(plain.failure, invalid_argument) << "a heading without a link ends the scan";
  EXPECT_EQ(Rows(), 0);
}

TEST(ScanMapAnchorList, NeedsATagNearItsEndThoughNoRowFollows) {
  RecordProperty("quirk", "map-anchor-end-needs-a-near-tag");
  const ScanRig far(AnchorPage(AnchorRow()) + std::string(40000, '.') + "<");
  EXPECT_EQ(Rows(), 1);
  EXPECT_EQ(far.failure, 0) << "the tags of the table's end are nearer";
  const ScanRig no_rows("<P>no events" + std::string(40000, '.') + "</P>");
  EXPECT_EQ(no_rows.failure, overflow);
  const ScanRig no_tag("no events" + std::string(40000, '.'));
  EXPECT_EQ(no_tag.failure, 0);
}

TEST(ScanMapAnchorList, KeepsTheSlashOfALink) {
  RecordProperty("quirk", "map-anchor-link-keeps-its-slash");
  std::string with_slash = AnchorRow();
  with_slash.insert(with_slash.find("recenteqs"), "/");
  const ScanRig rig(AnchorPage(with_slash));
  ASSERT_EQ(Rows(), 1);
  EXPECT_EQ(SubItem(1, 7), "/recenteqs/Quakes/pr2018037005.html");
}

TEST(ScanMapAnchorList, SkipsItsCellAndTheTagAfterTheDepthByTheirLength) {
  RecordProperty("quirk", "tags-are-skipped-by-their-length");
  for (const auto &[tags, magnitude] :
       std::initializer_list<std::pair<const char *, const char *>>{{"</A></TD><TD ALIGN=right>", "2.7"},
                                                                    {"</A></TD><TD ALIGN=righ>", ".7"},
                                                                    {"</A></TD><TD ALIGN=\"right\">", "> 2.7"}}) {
    std::string changed = AnchorRow();
    changed.replace(changed.find("</A></TD><TD ALIGN=right>"), 25, tags);
    const ScanRig rig(AnchorPage(changed));
    ASSERT_EQ(Rows(), 1) << tags;
    EXPECT_EQ(RowTexts(1)[0], magnitude) << tags;
  }
  for (const auto &[tag, place] : std::initializer_list<std::pair<const char *, const char *>>{
           {"</A>", "Tallaboa"}, {"</TT>", "> Tallaboa"}, {"<I>", "Tallaboa"}, {"<>", "allaboa"}}) {
    std::string changed = AnchorRow("2.7", "Tallaboa");
    changed.replace(changed.find("</A> Tallaboa"), 4, tag);
    const ScanRig rig(AnchorPage(changed));
    ASSERT_EQ(Rows(), 1) << tag;
    EXPECT_EQ(SubItem(1, 6), place) << tag;
  }
}

TEST(ScanMapAnchorList, ShiftsTheFieldsAfterTwoBlanks) {
  RecordProperty("quirk", "two-blanks-shift-the-fields");
  std::string shifted = AnchorRow();
  shifted.insert(shifted.find(" 08:03:23"), " ");
  const ScanRig rig(AnchorPage(shifted + AnchorRow()));
  ASSERT_EQ(Rows(), 2);
  EXPECT_EQ(RowTexts(1), (Texts{"2.7", "2018/02/06", "", "08:03:23", "17.916N", "66.738W 11.0",
                                "9 km SSW of Tallaboa, Puerto Rico", "recenteqs/Quakes/pr2018037005.html"}));
  EXPECT_EQ(RowTexts(2), row) << "the next row is whole";
}

TEST(ScanMapAnchorList, AlertsForItsFirstRowAlthoughItsFieldsEndBeforeThePlacesOfTheAlert) {
  WatchingRig rig;
  rig.store()["LastBig"] = "9.9";
  conffrm->Combo2.Text = "Puerto Rico";
  rig.serve("http://puertorico.localhost:17650/recenteqs/eqs_all.htm", AnchorPage(AnchorRow("4.5") + AnchorRow("5.5")));
  rig.random().Add(0);
  rig.refresh();
  EXPECT_EQ(rig.trace({"show"}), Lines{"show frmQalert"});
  EXPECT_EQ(Rows(), 2) << "the alert traps its failure, and the scan goes on";
  EXPECT_EQ(Module1->RefreshCount, 0);
}

/// The positions in one row: how far each searched mark is from the start of the text at that moment.
struct Distances {
  int marker = 20;
  int magnitude = 60;  // the "<" after it
  int link = 80;       // the ">" after it
  int token = 3;       // the blank after each of the four
  int depth = 3;       // the "<" after it
  int place = 12;      // the "<" after it
};

/// A page of one row with these distances.
std::string PageWith(const Distances &at) {
  std::string page = AtPosition(at.marker, "MAP<");
  page.resize(static_cast<std::size_t>(at.magnitude) - 1, '7');
  page += '<';
  page.resize(static_cast<std::size_t>(at.link) - 1, 'l');
  page += '>';
  for (int token = 0; token < 4; ++token)
    page += AtPosition(at.token, " ", 't');
  std::string tail = AtPosition(at.depth, "<", '5');
  tail.resize(static_cast<std::size_t>(at.place) - 1, 'p');
  return page + tail + "<";
}

/// "ok", or the number of the failure that keeps a row with these distances from being read.
std::string EndOf(const Distances &at) {
  const ScanRig rig(PageWith(at));
  return Rows() == 1 ? "ok" : std::to_string(rig.failure);
}

TEST(ScanMapAnchorList, OverflowsWhereAPositionOrASumMadeFromItDoesNotFitSixteenBits) {
  EXPECT_EQ(EndOf({}), "ok");
  EXPECT_EQ(EndOf({.marker = 32716, .magnitude = 32745, .link = 32766}), "ok");
  EXPECT_EQ(EndOf({.marker = 32716, .magnitude = 32744, .link = 32766}), "5") << "the magnitude has no room";
  EXPECT_EQ(EndOf({.marker = 32739, .magnitude = 32767, .link = 32800}), "6") << "the magnitude's start";
  EXPECT_EQ(EndOf({.marker = 32740, .magnitude = 32800, .link = 32900}), "6")
      << "where the magnitude's end is searched";
  EXPECT_EQ(EndOf({.magnitude = 32756, .link = 32766}), "ok") << "an empty link";
  EXPECT_EQ(EndOf({.magnitude = 32757, .link = 32766}), "5") << "the link has no room";
  EXPECT_EQ(EndOf({.magnitude = 32759, .link = 32766}), "6") << "the link's start";
  EXPECT_EQ(EndOf({.magnitude = 32768, .link = 32800}), "6") << "the magnitude's end";
  EXPECT_EQ(EndOf({.link = 32767}), "6") << "the cut after the link";
  EXPECT_EQ(EndOf({.link = 32768}), "6") << "the link's end";
  EXPECT_EQ(EndOf({.token = 32766}), "ok");
  EXPECT_EQ(EndOf({.token = 32767}), "6") << "the cut after a token";
  EXPECT_EQ(EndOf({.depth = 32763, .place = 32767}), "ok") << "an empty place";
  EXPECT_EQ(EndOf({.depth = 32763, .place = 32766}), "5") << "the place has no room";
  EXPECT_EQ(EndOf({.depth = 32764, .place = 32767}), "6") << "the place's start";
  EXPECT_EQ(EndOf({.depth = 32764, .place = 32768}), "6") << "the place's end";
  EXPECT_EQ(EndOf({.depth = 32768, .place = 32780}), "6") << "the depth's end";
}

}  // namespace
}  // namespace borvane
