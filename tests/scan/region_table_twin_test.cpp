#include <gtest/gtest.h>

#include "support/program/list_pages.h"
#include "support/program/twin_rig.h"

namespace borvane {
namespace {

const std::string long_run(32700, ' ');
const std::string heading = "<td><center>Region</center></td>";

/// Pages up to a step of the scan, after which every short sequence of tokens is tried.
std::vector<std::string> Beginnings() {
  const std::string first = heading + "<a href=\"/1.html\">";
  const std::string second = first + "date</a><a href=\"/2.html\">";
  const std::string third = second + "3.8 ML</a><a href=\"/3.html\">";
  return {"",
          "<td><center>",
          heading,
          heading + "<a href=\"",
          first,
          second,
          third,
          third + "place</a>",
          heading + "1.html\">d<2.html\">3.8<3.html\">"};
}

const std::vector<std::string> short_tokens = {heading, "href", "html", "</table>", "<", " ", "aaaaaa"};

TEST(ScanRegionTableTwin, AgreesOnAllShortSequencesOfTokens) {
  TwinRig rig(region_table_twins);
  EXPECT_TRUE(rig.AgreeOnSequences(Beginnings(), short_tokens, tokens_after - 1));
  EXPECT_GE(rig.pages(), 9 * (1 + 7 + 49 + 343));
}

TEST(ScanRegionTableTwin, AgreesOnAllShortSequencesOfTokensWithLongRunsOfBlanks) {
  std::vector<std::string> tokens = short_tokens;
  tokens.push_back(long_run);
  std::vector<std::string> far_beginnings = Beginnings();
  for (std::string &beginning : far_beginnings)
    beginning += long_run;
  TwinRig rig(region_table_twins);
  EXPECT_TRUE(rig.AgreeOnSequences(Beginnings(), tokens, 2));
  EXPECT_TRUE(rig.AgreeOnSequences(far_beginnings, tokens, 1));
  EXPECT_EQ(rig.pages(), 9 * (1 + 8 + 64 + 1 + 8));
}

TEST(ScanRegionTableTwin, AgreesOnAPageCutAnywhere) {
  TwinRig rig(region_table_twins);
  EXPECT_TRUE(rig.AgreeOnCuts(RegionPage(RegionRow() + RegionRow("4.0"))));
}

TEST(ScanRegionTableTwin, AgreesOnAPageWithOneCharacterWrong) {
  TwinRig rig(region_table_twins);
  for (const char *magnitude : {"3.8 ML", "3.8"}) {
    EXPECT_TRUE(rig.AgreeOnOneWrongCharacter(RegionPage(RegionRow(magnitude)), "<> h"));
    EXPECT_TRUE(rig.AgreeOnOneWrongCharacter(RegionPage(RegionRow(magnitude) + RegionRow()), "<> h"));
  }
}

TEST(ScanRegionTableTwin, AgreesOnRandomPages) {
  const std::vector<std::string> pieces = {heading,
                                           "href",
                                           "html",
                                           "</table>",
                                           "<",
                                           " ",
                                           "a",
                                           "<a href=\"/1.html\">3.8 ML</a>",
                                           "<a href=\"/2.html\">3.8</a>",
                                           RegionRow(),
                                           RegionRow("4.0"),
                                           std::string(60, 'x')};
  TwinRig rig(region_table_twins);
  for (const std::string &beginning : {std::string(), heading}) {
    std::vector<std::string> after_beginning = pieces;
    after_beginning[0] = beginning;
    EXPECT_TRUE(rig.AgreeOnRandomPages(after_beginning, 1500, 3, 20));
  }
}

TEST(ScanRegionTableTwin, AgreesOnRandomPagesThatAreLong) {
  const std::vector<std::string> pieces = {
      long_run,   std::string(32640, 'y'), heading, "<a href=\"/1.html\">3.8 ML</a>",  "html", "href",
      "</table>", heading + RegionRow(),   "<",     heading + "<a href=\"/1.html\">d<"};
  TwinRig rig(region_table_twins);
  EXPECT_TRUE(rig.AgreeOnRandomPages(pieces, 80, 2, 11));
}

}  // namespace
}  // namespace borvane
