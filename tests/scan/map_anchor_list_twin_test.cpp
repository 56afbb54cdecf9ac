#include <gtest/gtest.h>

#include "support/program/list_pages.h"
#include "support/program/twin_rig.h"

namespace borvane {
namespace {

const std::string long_run(32700, ' ');

/// Pages up to a step of the scan, after which every short sequence of tokens is tried.
std::vector<std::string> Beginnings() {
  const std::string marker = "MAP</A></TD><TD ALIGN=right> ";
  const std::string magnitude = marker + "1.6<";
  const std::string link = magnitude + "A HREF=\"x\">";
  const std::string tokens = link + "d t la lo ";
  const std::string depth = tokens + "5<";
  return {"",        "aaaaaaaa",
          "MAP<",    marker,
          magnitude, magnitude + "A HREF=\"",
          link,      tokens,
          depth,     depth + "/A> place<" + magnitude};
}

const std::vector<std::string> short_tokens = {"MAP<", "<", ">", " ", "a", "aaaaaaaaaaaaaaaaaaaaaaaaa"};

TEST(ScanMapAnchorListTwin, AgreesOnAllShortSequencesOfTokens) {
  TwinRig rig(map_anchor_list_twins);
  EXPECT_TRUE(rig.AgreeOnSequences(Beginnings(), short_tokens, tokens_after - 1));
  EXPECT_GE(rig.pages(), 10 * (1 + 6 + 36 + 216));
}

TEST(ScanMapAnchorListTwin, AgreesOnAllShortSequencesOfTokensWithLongRunsOfBlanks) {
  std::vector<std::string> tokens = short_tokens;
  tokens.push_back(long_run);
  std::vector<std::string> far_beginnings = Beginnings();
  for (std::string &beginning : far_beginnings)
    beginning += long_run;
  TwinRig rig(map_anchor_list_twins);
  EXPECT_TRUE(rig.AgreeOnSequences(Beginnings(), tokens, 2));
  EXPECT_TRUE(rig.AgreeOnSequences(far_beginnings, tokens, 1));
  EXPECT_EQ(rig.pages(), 10 * (1 + 7 + 49 + 1 + 7));
}

const std::string sample = AnchorPage(AnchorRow() + AnchorRow("3.2", "Punta Cana"));

TEST(ScanMapAnchorListTwin, AgreesOnAPageCutAnywhere) {
  TwinRig rig(map_anchor_list_twins);
  EXPECT_TRUE(rig.AgreeOnCuts(sample));
}

TEST(ScanMapAnchorListTwin, AgreesOnAPageWithOneCharacterWrong) {
  TwinRig rig(map_anchor_list_twins);
  EXPECT_TRUE(rig.AgreeOnOneWrongCharacter(sample, "<> M"));
}

TEST(ScanMapAnchorListTwin, AgreesOnRandomPages) {
  const std::vector<std::string> pieces = {"MAP<",
                                           "<",
                                           ">",
                                           " ",
                                           "a",
                                           "\n",
                                           "/A></TD><TD ALIGN=right> 2.7 ",
                                           "A HREF=\"b\">",
                                           "d t la lo ",
                                           "5</A> place</TD>",
                                           AnchorRow(),
                                           std::string(25, 'x')};
  TwinRig rig(map_anchor_list_twins);
  EXPECT_TRUE(rig.AgreeOnRandomPages(pieces, 3000, 3, 30));
}

TEST(ScanMapAnchorListTwin, AgreesOnRandomPagesThatAreLong) {
  const std::vector<std::string> pieces = {long_run,
                                           std::string(32640, 'y'),
                                           std::string(40, 'z'),
                                           "<",
                                           ">",
                                           "MAP<",
                                           AnchorRow(),
                                           "A HREF=\"b\">d t la lo 5</A> place</TD>"};
  TwinRig rig(map_anchor_list_twins);
  EXPECT_TRUE(rig.AgreeOnRandomPages(pieces, 60, 2, 11));
}

}  // namespace
}  // namespace borvane
