#include <gtest/gtest.h>

#include "support/program/list_pages.h"
#include "support/program/twin_rig.h"

namespace borvane {
namespace {

const std::string long_run(32700, ' ');

/// Pages up to a step of the scan, after which every short sequence of tokens is tried.
std::vector<std::string> Beginnings() {
  const std::string both_markers = ">MAP</A>map</A>.";
  const std::string magnitude = both_markers + "1.6<";
  const std::string link = magnitude + "A HREF=\"/x\">";
  const std::string tokens = link + "d t la lo ";
  const std::string depth = tokens + "5</A>.";
  const std::string row = depth + "place.<BR>.";
  return {"",        "aaaaaaaa", ">MAP</A>", ">map</A>", both_markers,
          magnitude, link,       tokens,     depth,      row + ">MAP</A>.map</A>"};
}

const std::vector<std::string> short_tokens = {">map</A>", ">MAP</A>", "<", ">", " ", "a"};

TEST(ScanMapListTwin, AgreesOnAllShortSequencesOfTokens) {
  TwinRig rig(map_list_twins);
  EXPECT_TRUE(rig.AgreeOnSequences(Beginnings(), short_tokens, tokens_after - 1));
  EXPECT_GE(rig.pages(), 10 * (1 + 6 + 36 + 216));
}

TEST(ScanMapListTwin, AgreesOnAllShortSequencesOfTokensWithLongRunsOfBlanks) {
  std::vector<std::string> tokens = short_tokens;
  tokens.push_back(long_run);
  std::vector<std::string> far_beginnings = Beginnings();
  for (std::string &beginning : far_beginnings)
    beginning += long_run;
  TwinRig rig(map_list_twins);
  EXPECT_TRUE(rig.AgreeOnSequences(Beginnings(), tokens, 2));
  EXPECT_TRUE(rig.AgreeOnSequences(far_beginnings, tokens, 1));
  EXPECT_EQ(rig.pages(), 10 * (1 + 7 + 49 + 1 + 7));
}

const std::string sample = MapPage(MapRow() + CapitalMapRow() + MapRow("0.7", "Milford, UT"));

TEST(ScanMapListTwin, AgreesOnAPageCutAnywhere) {
  TwinRig rig(map_list_twins);
  EXPECT_TRUE(rig.AgreeOnCuts(sample));
}

TEST(ScanMapListTwin, AgreesOnAPageWithOneCharacterWrong) {
  TwinRig rig(map_list_twins);
  EXPECT_TRUE(rig.AgreeOnOneWrongCharacter(sample, "<> M"));
}

TEST(ScanMapListTwin, AgreesOnRandomPages) {
  const std::vector<std::string> pieces = {">map</A>",
                                           ">MAP</A>",
                                           "<",
                                           ">",
                                           " ",
                                           "a",
                                           "\n",
                                           "A HREF=\"/b\">",
                                           "d t la lo ",
                                           "5</A> place <BR>",
                                           MapRow(),
                                           CapitalMapRow(),
                                           std::string(300, 'x')};
  TwinRig rig(map_list_twins);
  EXPECT_TRUE(rig.AgreeOnRandomPages(pieces, 3000, 3, 30));
}

TEST(ScanMapListTwin, AgreesOnRandomPagesThatAreLong) {
  const std::vector<std::string> pieces = {long_run,
                                           std::string(32640, 'y'),
                                           std::string(40, 'z'),
                                           "<",
                                           ">",
                                           ">map</A>",
                                           ">MAP</A>",
                                           MapRow(),
                                           CapitalMapRow(),
                                           "A HREF=\"/b\">d t la lo 5</A> place <BR>"};
  TwinRig rig(map_list_twins);
  EXPECT_TRUE(rig.AgreeOnRandomPages(pieces, 60, 2, 11));
}

}  // namespace
}  // namespace borvane
