#include <gtest/gtest.h>

#include "support/program/list_pages.h"
#include "support/program/twin_rig.h"

namespace borvane {
namespace {

const std::string long_run(32700, ' ');
const std::string sample = WorldPage(WorldRow() + WorldRow(Bold("5.1"), Bold("Hualian")) +
                                     WorldRow(BoldAndColored("6.1"), BoldAndColored("Vanj")));

/// Pages up to a step of the scan, after which every short sequence of tokens is tried.
std::vector<std::string> Beginnings() {
  const std::string magnitude = "MAP nowrap>";
  const std::string link = magnitude + "4.4<td ";
  const std::string date = link + "href=\"/x\">";
  const std::string numbers = date + "d t<";
  const std::string last_number = numbers + "nowrap>aa>1<nowrap>aa>2<";
  const std::string place = last_number + "nowrap>aa>3<";
  return {"",   "MAP",   magnitude,   magnitude + "<strong>", magnitude + "<strong><",         link,
          date, numbers, last_number, place + "<td>",         place + "<td>place<" + magnitude};
}

const std::vector<std::string> short_tokens = {"MAP", "nowrap>", "strong>", "href=", "<td>", "<", ">", " ", "a"};

/// Both roles of the scanner.
class ScanWorldListTwin : public testing::TestWithParam<const Twins *> {};

INSTANTIATE_TEST_SUITE_P(BothRoles, ScanWorldListTwin, testing::Values(&world_list_twins, &world_headline_twins),
                         [](const auto &twins) { return twins.param->for_headline ? "Headline" : "List"; });

TEST_P(ScanWorldListTwin, AgreesOnAllShortSequencesOfTokens) {
  TwinRig rig(*GetParam());
  EXPECT_TRUE(rig.AgreeOnSequences(Beginnings(), short_tokens, tokens_after - 2));
  EXPECT_GE(rig.pages(), 11 * (1 + 9 + 81));
}

TEST_P(ScanWorldListTwin, AgreesOnAllShortSequencesOfTokensWithLongRunsOfBlanks) {
  std::vector<std::string> tokens = short_tokens;
  tokens.push_back(long_run);
  std::vector<std::string> far_beginnings = Beginnings();
  for (std::string &beginning : far_beginnings)
    beginning += long_run;
  TwinRig rig(*GetParam());
  EXPECT_TRUE(rig.AgreeOnSequences(Beginnings(), tokens, 1));
  EXPECT_TRUE(rig.AgreeOnSequences(far_beginnings, tokens, 1));
  EXPECT_EQ(rig.pages(), 2 * 11 * (1 + 10));
}

TEST_P(ScanWorldListTwin, AgreesOnAPageCutAnywhere) {
  TwinRig rig(*GetParam());
  EXPECT_TRUE(rig.AgreeOnCuts(sample));
}

TEST_P(ScanWorldListTwin, AgreesOnAPageWithOneCharacterWrong) {
  TwinRig rig(*GetParam());
  EXPECT_TRUE(rig.AgreeOnOneWrongCharacter(sample, "<> M"));
}

TEST_P(ScanWorldListTwin, AgreesOnRandomPages) {
  const std::vector<std::string> pieces = {"MAP",
                                           "nowrap>",
                                           "strong>",
                                           "href=",
                                           "<td>",
                                           "<",
                                           ">",
                                           " ",
                                           "a",
                                           "\n",
                                           "<strong><font color=\"#FF0000\">",
                                           "href=\"/b\">d t<",
                                           "nowrap><tt> 1 <nowrap><tt> 2 <",
                                           "nowrap><tt> 3 <",
                                           "<td>place</td>",
                                           WorldRow(),
                                           WorldRow(BoldAndColored("6.1"), Bold("Vanj")),
                                           std::string(29, 'x')};
  TwinRig rig(*GetParam());
  EXPECT_TRUE(rig.AgreeOnRandomPages(pieces, 3000, 3, 30));
}

TEST_P(ScanWorldListTwin, AgreesOnRandomPagesThatAreLong) {
  const std::vector<std::string> pieces = {long_run,
                                           std::string(32640, 'y'),
                                           std::string(40, 'z'),
                                           "<",
                                           ">",
                                           "MAP",
                                           "<td>",
                                           "nowrap><tt> 1 <",
                                           WorldRow(),
                                           WorldRow(Bold("5.1"), BoldAndColored("Vanj")),
                                           "nowrap>4<href=\"/b\">d t<"};
  TwinRig rig(*GetParam());
  EXPECT_TRUE(rig.AgreeOnRandomPages(pieces, 60, 2, 11));
}

}  // namespace
}  // namespace borvane
