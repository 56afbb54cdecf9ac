#include <gtest/gtest.h>

#include "scan/scanners.h"
#include "support/program/page_rig.h"

namespace borvane {
namespace {

/// Scans a page in a program of its own.
struct ScanRig : PageRig {
  explicit ScanRig(std::string text) : PageRig(ScanQuakesList, std::move(text)) {}
};

TEST(ScanQuakesList, KeepsPageOrderAndEqualRows) {
  const ScanRig rig(Page(Row("1.0") + Row("3.0") + Row("1.0")));
  ASSERT_EQ(Rows(), 3);
  EXPECT_EQ(frmRecords->ListView1.ListItems(1).Text, "1.0");
  EXPECT_EQ(frmRecords->ListView1.ListItems(2).Text, "3.0");
  EXPECT_EQ(frmRecords->ListView1.ListItems(3).Text, "1.0");
}

TEST(ScanQuakesList, StoresTheLinkWithoutItsSlashSoThatItJoinsTheSiteRoot) {
  WatchingRig rig;
  rig.refresh();
  EXPECT_EQ(Module1->SiteRoot + SubItem(1, 7), southern + "/recenteqs/Quakes/ci37868143.html");
}

TEST(ScanQuakesList, LeavesInThePageWhatItHasNotCut) {
  const ScanRig rig(Page(Row("2.0", "Castaic")));
  EXPECT_EQ(rig.page, "/A>    Castaic\n</PRE>\n");
}

TEST(ScanQuakesList, LeavesInThePageWhatAFailureLeft) {
  const ScanRig rig("1.6 45678901234/recenteqs/Quakes/x");
  EXPECT_EQ(rig.failure, static_cast<int>(Failure::InvalidArgument));
  EXPECT_EQ(rig.page, "45678901234/recenteqs/Quakes/x") << "the text up to the magnitude has been cut";
}

TEST(ScanQuakesList, PrefersAMissingTagToTheLineFeed) {
  RecordProperty("quirk", "missing-tag-counts-as-position-zero");
  const ScanRig without("<PRE>\n" + Row());
  EXPECT_EQ(without.failure, static_cast<int>(Failure::InvalidArgument));
  EXPECT_EQ(Rows(), 0);
}

TEST(ScanQuakesList, MeasuresThePlaceByAFixedAllowance) {
  RecordProperty("quirk", "place-length-is-fixed-allowance");
  for (const auto &[tag, place] :
       std::initializer_list<std::pair<const char *, const char *>>{{"</A>", "abcdefgh"},
                                                                    {"</B>", "abcdefgh"},
                                                                    {"<>", "abcdef"},
                                                                    {"<p>", "abcdefg"},
                                                                    {"</TD>", "abcdefgh\n"},
                                                                    {"</EM> ", "abcdefgh\n"}}) {
    const ScanRig rig("1.6 45678901234/recenteqs/Quakes/ HREF=\"/x\">d t la lo 5" + std::string(tag) +
                      "abcdefgh\nend<");
    ASSERT_EQ(Rows(), 1) << tag;
    EXPECT_EQ(SubItem(1, 6), place) << tag;
  }
}

TEST(ScanQuakesList, ShiftsTheFieldsAfterTwoBlanks) {
  RecordProperty("quirk", "two-blanks-shift-the-fields");
  std::string row = Row();
  row.insert(row.find(" 01:26:13"), " ");
  const ScanRig rig(Page(row + Row("1.6")));
  ASSERT_EQ(Rows(), 2);
  EXPECT_EQ(SubItem(1, 1), "2018/02/07");
  EXPECT_EQ(SubItem(1, 2), "");
  EXPECT_EQ(SubItem(1, 3), "01:26:13");
  EXPECT_EQ(SubItem(1, 4), "34.495N");
  EXPECT_EQ(SubItem(1, 5), "118.667W 26.5");
  EXPECT_EQ(SubItem(2, 2), "01:26:13") << "the next row is whole";
}

TEST(ScanQuakesList, FailsForARowThatLiesBeyondSixteenBits) {
  RecordProperty("quirk", "row-beyond-sixteen-bits");
  const std::string gap(33000, '.');
  const ScanRig before_the_first(gap + Page(Row()));
  EXPECT_EQ(before_the_first.failure, static_cast<int>(Failure::Overflow));
  EXPECT_EQ(Rows(), 0);
}

TEST(ScanQuakesList, KeepsTheRowsBeforeOneThatLiesBeyondSixteenBits) {
  const ScanRig rig(Page(Row("2.0") + Row("1.6") + std::string(33000, '.') + Row("3.0")));
  EXPECT_EQ(rig.failure, static_cast<int>(Failure::Overflow));
  EXPECT_EQ(Rows(), 2);
}

/// The positions in one row: how far each searched mark is from the start of the text at that moment.
struct Distances {
  int blank = 20;   // after the magnitude, from the text's start
  int equals = 40;  // from after that blank
  int end_of_link = 50;
  int token = 5;    // the blank after each of the four, from where the token begins
  int tag = 12;     // from the longitude's start
  int closing = 3;  // the end of the tag, from after its "<"
  int line = 9;     // the line feed, from there
};

/// A page of one row with these distances.
std::string PageWith(const Distances &at) {
  std::string page(static_cast<std::size_t>(at.blank - 1), 'm');
  page += ' ';
  std::string text = "/recenteqs/Quakes/";
  text.resize(static_cast<std::size_t>(at.equals - 1), 'l');
  text += '=';
  text.resize(static_cast<std::size_t>(at.end_of_link - 1), 'u');
  text += '>';
  const std::string token = std::string(static_cast<std::size_t>(at.token - 1), 't') + ' ';
  text += token + token + token + token;
  text += std::string(static_cast<std::size_t>(at.tag - at.token - 1), '5') + '<';
  std::string tail(static_cast<std::size_t>(at.closing - 1), 'c');
  tail += '>';
  tail.resize(static_cast<std::size_t>(at.line - 1), 'p');
  tail += '\n';
  return page + text + tail + "<";
}

/// "ok", or the number of the failure that ends the scan of a row with these distances.
std::string EndOf(const Distances &at) {
  const ScanRig rig(PageWith(at));
  return rig.failure == 0 && Rows() == 1 ? "ok" : std::to_string(rig.failure);
}

TEST(ScanQuakesList, OverflowsWhereAPositionOrASumMadeFromItDoesNotFitSixteenBits) {
  EXPECT_EQ(EndOf({}), "ok");
  // The marker follows the blank and is searched first: it is one position further.
  EXPECT_EQ(EndOf({.blank = 32766}), "ok");
  EXPECT_EQ(EndOf({.blank = 32767}), "6") << "the marker's position";
  EXPECT_EQ(EndOf({.equals = 32764, .end_of_link = 32766}), "5") << "the link has no room";
  EXPECT_EQ(EndOf({.equals = 32765, .end_of_link = 32766}), "6") << "the link's start";
  EXPECT_EQ(EndOf({.equals = 32700, .end_of_link = 32766}), "ok");
  EXPECT_EQ(EndOf({.equals = 32700, .end_of_link = 32767}), "6") << "the cut after the link";
  EXPECT_EQ(EndOf({.equals = 32700, .end_of_link = 32768}), "6") << "the link's end";
  EXPECT_EQ(EndOf({.equals = 32768, .end_of_link = 32780}), "6") << "the equals sign";
  EXPECT_EQ(EndOf({.token = 32766, .tag = 32767}), "6") << "the cut after the tag";
  EXPECT_EQ(EndOf({.token = 32700, .tag = 32766}), "ok");
  EXPECT_EQ(EndOf({.token = 32767, .tag = 32768}), "6") << "the cut after a token";
  EXPECT_EQ(EndOf({.tag = 32766}), "ok");
  EXPECT_EQ(EndOf({.tag = 32767}), "6") << "the cut after the tag";
  EXPECT_EQ(EndOf({.closing = 32766, .line = 32767}), "ok");
  EXPECT_EQ(EndOf({.closing = 32767, .line = 32768}), "6") << "the line feed";
  EXPECT_EQ(EndOf({.closing = 3, .line = 32767}), "ok");
  EXPECT_EQ(EndOf({.closing = 3, .line = 32768}), "6") << "the line feed";
}

TEST(ScanQuakesList, OverflowsWhereThePlaceWouldBeginBeyondSixteenBits) {
  for (const auto &[closing, failure] : std::initializer_list<std::pair<std::size_t, int>>{{32766, 0}, {32767, 6}}) {
    std::string tail = "12345678\n";
    tail.resize(closing - 1, 'p');
    const ScanRig rig("1.6 45678901234/recenteqs/Quakes/ HREF=\"/x\">d t la lo 5<" + tail + "><");
    EXPECT_EQ(rig.failure, failure) << closing;
  }
}

}  // namespace
}  // namespace borvane
