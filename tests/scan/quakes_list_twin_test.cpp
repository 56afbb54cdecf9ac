#include <gtest/gtest.h>

#include "support/program/pages.h"
#include "support/program/twin_rig.h"

namespace borvane {
namespace {

const std::string marker = "/recenteqs/Quakes/";
const std::string long_run(32700, ' ');

/// Pages up to a step of the scan, after which every short sequence of tokens is tried.
std::vector<std::string> Beginnings() {
  const std::string magnitude = "aaaaaaaaaaa 1.6" + marker;
  const std::string link = " HREF=\"/a\">";
  const std::string tokens = "d t la lo ";
  const std::string depth = "5<";
  const std::string row = magnitude + link + tokens + depth;
  return {"",
          "aaaaaaaaaaaaaaa",
          magnitude,
          magnitude + link,
          magnitude + link + "d t ",
          magnitude + link + tokens,
          row,
          row + "/a>",
          row + "/a> aa\n" + "aaaaaaaaaaa 2.0" + marker,
          row + "/a> aa\n<" + magnitude + link + tokens + depth};
}

const std::vector<std::string> short_tokens = {marker, "<", ">", "=", " ", "\n", "a"};

TEST(ScanQuakesListTwin, AgreesOnAllShortSequencesOfTokens) {
  TwinRig rig(quakes_list_twins);
  EXPECT_TRUE(rig.AgreeOnSequences(Beginnings(), short_tokens, tokens_after));
  EXPECT_GE(rig.pages(), 10 * (1 + 7 + 49 + 343 + 2401));
}

TEST(ScanQuakesListTwin, AgreesOnAllShortSequencesOfTokensWithLongRunsOfBlanks) {
  std::vector<std::string> tokens = short_tokens;
  tokens.push_back(long_run);
  std::vector<std::string> far_beginnings = Beginnings();
  for (std::string &beginning : far_beginnings)
    beginning += long_run;
  TwinRig rig(quakes_list_twins);
  EXPECT_TRUE(rig.AgreeOnSequences(Beginnings(), tokens, 2));
  EXPECT_TRUE(rig.AgreeOnSequences(far_beginnings, tokens, 1));
  EXPECT_EQ(rig.pages(), 10 * (1 + 8 + 64 + 1 + 8));
}

/// A page of realistic rows.
const std::string sample = Page(Row("2.0", "4 km W of Castaic, CA") + Row("1.6", "6 km ENE of Yucaipa, CA"));

TEST(ScanQuakesListTwin, AgreesOnAPageCutAnywhere) {
  TwinRig rig(quakes_list_twins);
  EXPECT_TRUE(rig.AgreeOnCuts(sample));
}

TEST(ScanQuakesListTwin, AgreesOnAPageWithOneCharacterWrong) {
  TwinRig rig(quakes_list_twins);
  EXPECT_TRUE(rig.AgreeOnOneWrongCharacter(sample, "<>= \n"));
}

TEST(ScanQuakesListTwin, AgreesOnRandomPages) {
  const std::vector<std::string> pieces = {marker,
                                           "<",
                                           ">",
                                           "=",
                                           " ",
                                           "\n",
                                           "a",
                                           "\"/a\">",
                                           "aaaaaaaaaaa 1.6",
                                           " HREF=\"/b.html\">",
                                           "d t la lo ",
                                           "11.6</A>    6 km\n",
                                           "1.6 45678901234" + marker + " HREF=\"/x\">d t la lo 5</A>  place\n<",
                                           std::string(300, 'x')};
  TwinRig rig(quakes_list_twins);
  EXPECT_TRUE(rig.AgreeOnRandomPages(pieces, 3000, 5, 44));
}

TEST(ScanQuakesListTwin, AgreesOnRandomPagesThatAreLong) {
  const std::vector<std::string> pieces = {long_run,
                                           std::string(32640, 'y'),
                                           std::string(40, 'z'),
                                           "<",
                                           ">",
                                           "\n",
                                           "=",
                                           "1.6 45678901234" + marker + " HREF=\"/x\">d t la lo 5</A>  place\n<",
                                           "1.6 45678901234" + marker + " HREF=\"/x\">d t la lo 5",
                                           "d t la lo 5<"};
  TwinRig rig(quakes_list_twins);
  EXPECT_TRUE(rig.AgreeOnRandomPages(pieces, 60, 2, 11));
}

}  // namespace
}  // namespace borvane
