#include <ostream>

#include <gtest/gtest.h>

#include "support/program/list_pages.h"
#include "support/program/twin_rig.h"

namespace borvane {
namespace {

using Texts = std::vector<std::string>;

/// A scanner's twins and the pages on which they are compared.
struct TwinCase {
  std::string name;
  const Twins *twins;
  Texts beginnings;  // pages up to a step of the scan, after which every short sequence of tokens is tried
  Texts tokens;
  int length;              // of those sequences
  int length_with_runs;    // where long runs of blanks are among the tokens
  Texts samples;           // pages to be cut, or to have one character wrong
  std::string characters;  // wrong ones
  Texts pieces;            // of random pages
  unsigned shortest;       // how many pieces a page has at least
  unsigned longest;        // and at most
  Texts pieces_of_long_pages;
};

void PrintTo(const TwinCase &twin, std::ostream *out) { *out << twin.name; }

const std::string long_run(32700, ' ');
const std::string almost_as_long(32640, 'y');
const std::string some_more(40, 'z');

TwinCase QuakesList() {
  const std::string marker = "/recenteqs/Quakes/";
  const std::string magnitude = "aaaaaaaaaaa 1.6" + marker;
  const std::string link = " HREF=\"/a\">";
  const std::string tokens = "d t la lo ";
  const std::string row = magnitude + link + tokens + "5<";
  const std::string short_row = "1.6 45678901234" + marker + " HREF=\"/x\">d t la lo 5";
  return {.name = "QuakesList",
          .twins = &quakes_list_twins,
          .beginnings = {"", "aaaaaaaaaaaaaaa", magnitude, magnitude + link, magnitude + link + "d t ",
                         magnitude + link + tokens, row, row + "/a>", row + "/a> aa\n" + "aaaaaaaaaaa 2.0" + marker,
                         row + "/a> aa\n<" + row},
          .tokens = {marker, "<", ">", "=", " ", "\n", "a"},
          .length = tokens_after,
          .length_with_runs = 2,
          .samples = {Page(Row("2.0", "4 km W of Castaic, CA") + Row("1.6", "6 km ENE of Yucaipa, CA"))},
          .characters = "<>= \n",
          .pieces = {marker, "<", ">", "=", " ", "\n", "a", "\"/a\">", "aaaaaaaaaaa 1.6", " HREF=\"/b.html\">",
                     "d t la lo ", "11.6</A>    6 km\n", short_row + "</A>  place\n<", std::string(300, 'x')},
          .shortest = 5,
          .longest = 44,
          .pieces_of_long_pages = {long_run, almost_as_long, some_more, "<", ">", "\n", "=",
                                   short_row + "</A>  place\n<", short_row, "d t la lo 5<"}};
}

TwinCase MapList() {
  const std::string both_markers = ">MAP</A>map</A>.";
  const std::string magnitude = both_markers + "1.6<";
  const std::string link = magnitude + "A HREF=\"/x\">";
  const std::string tokens = link + "d t la lo ";
  const std::string depth = tokens + "5</A>.";
  const std::string row = depth + "place.<BR>.";
  return {.name = "MapList",
          .twins = &map_list_twins,
          .beginnings = {"", "aaaaaaaa", ">MAP</A>", ">map</A>", both_markers, magnitude, link, tokens, depth,
                         row + ">MAP</A>.map</A>"},
          .tokens = {">map</A>", ">MAP</A>", "<", ">", " ", "a"},
          .length = tokens_after - 1,
          .length_with_runs = 2,
          .samples = {MapPage(MapRow() + CapitalMapRow() + MapRow("0.7", "Milford, UT"))},
          .characters = "<> M",
          .pieces = {">map</A>", ">MAP</A>", "<", ">", " ", "a", "\n", "A HREF=\"/b\">", "d t la lo ",
                     "5</A> place <BR>", MapRow(), CapitalMapRow(), std::string(300, 'x')},
          .shortest = 3,
          .longest = 30,
          .pieces_of_long_pages = {long_run, almost_as_long, some_more, "<", ">", ">map</A>", ">MAP</A>", MapRow(),
                                   CapitalMapRow(), "A HREF=\"/b\">d t la lo 5</A> place <BR>"}};
}

TwinCase MapAnchorList() {
  const std::string marker = "MAP</A></TD><TD ALIGN=right> ";
  const std::string magnitude = marker + "1.6<";
  const std::string link = magnitude + "A HREF=\"x\">";
  const std::string tokens = link + "d t la lo ";
  const std::string depth = tokens + "5<";
  return {.name = "MapAnchorList",
          .twins = &map_anchor_list_twins,
          .beginnings = {"", "aaaaaaaa", "MAP<", marker, magnitude, magnitude + "A HREF=\"", link, tokens, depth,
                         depth + "/A> place<" + magnitude},
          .tokens = {"MAP<", "<", ">", " ", "a", std::string(25, 'a')},
          .length = tokens_after - 1,
          .length_with_runs = 2,
          .samples = {AnchorPage(AnchorRow() + AnchorRow("3.2", "Punta Cana"))},
          .characters = "<> M",
          .pieces = {"MAP<", "<", ">", " ", "a", "\n", "/A></TD><TD ALIGN=right> 2.7 ", "A HREF=\"b\">", "d t la lo ",
                     "5</A> place</TD>", AnchorRow(), std::string(25, 'x')},
          .shortest = 3,
          .longest = 30,
          .pieces_of_long_pages = {long_run, almost_as_long, some_more, "<", ">", "MAP<", AnchorRow(),
                                   "A HREF=\"b\">d t la lo 5</A> place</TD>"}};
}

/// For one of the scanner's two roles.
TwinCase WorldList(const std::string &name, const Twins &twins) {
  const std::string magnitude = "MAP nowrap>";
  const std::string link = magnitude + "4.4<td ";
  const std::string date = link + "href=\"/x\">";
  const std::string numbers = date + "d t<";
  const std::string last_number = numbers + "nowrap>aa>1<nowrap>aa>2<";
  const std::string place = last_number + "nowrap>aa>3<";
  return {
      .name = name,
      .twins = &twins,
      .beginnings = {"", "MAP", magnitude, magnitude + "<strong>", magnitude + "<strong><", link, date, numbers,
                     last_number, place + "<td>", place + "<td>place<" + magnitude},
      .tokens = {"MAP", "nowrap>", "strong>", "href=", "<td>", "<", ">", " ", "a"},
      .length = tokens_after - 2,
      .length_with_runs = 1,
      .samples = {WorldPage(WorldRow() + WorldRow(Bold("5.1"), Bold("Hualian")) +
                            WorldRow(BoldAndColored("6.1"), BoldAndColored("Vanj")))},
      .characters = "<> M",
      .pieces = {"MAP", "nowrap>", "strong>", "href=", "<td>", "<", ">", " ", "a", "\n",
                 "<strong><font color=\"#FF0000\">", "href=\"/b\">d t<", "nowrap><tt> 1 <nowrap><tt> 2 <",
                 "nowrap><tt> 3 <", "<td>place</td>", WorldRow(), WorldRow(BoldAndColored("6.1"), Bold("Vanj")),
                 std::string(29, 'x')},
      .shortest = 3,
      .longest = 30,
      .pieces_of_long_pages = {long_run, almost_as_long, some_more, "<", ">", "MAP", "<td>", "nowrap><tt> 1 <",
                               WorldRow(), WorldRow(Bold("5.1"), BoldAndColored("Vanj")), "nowrap>4<href=\"/b\">d t<"}};
}

TwinCase RegionTable() {
  const std::string heading = "<td><center>Region</center></td>";
  const std::string first = heading + "<a href=\"/1.html\">";
  const std::string second = first + "date</a><a href=\"/2.html\">";
  const std::string third = second + "3.8 ML</a><a href=\"/3.html\">";
  Texts samples;
  for (const char *magnitude : {"3.8 ML", "3.8"}) {
    samples.push_back(RegionPage(RegionRow(magnitude)));
    samples.push_back(RegionPage(RegionRow(magnitude) + RegionRow("4.0")));
  }
  return {
      .name = "RegionTable",
      .twins = &region_table_twins,
      .beginnings = {"", "<td><center>", heading, heading + "<a href=\"", first, second, third, third + "place</a>",
                     heading + "1.html\">d<2.html\">3.8<3.html\">"},
      .tokens = {heading, "href", "html", "</table>", "<", " ", "aaaaaa"},
      .length = tokens_after - 1,
      .length_with_runs = 2,
      .samples = samples,
      .characters = "<> h",
      // The heading is often among them, since nothing is read without it.
      .pieces = {heading, heading, heading, "href", "html", "</table>", "<", " ", "a", "<a href=\"/1.html\">3.8 ML</a>",
                 "<a href=\"/2.html\">3.8</a>", RegionRow(), RegionRow("4.0"), std::string(60, 'x')},
      .shortest = 3,
      .longest = 20,
      .pieces_of_long_pages = {long_run, almost_as_long, heading, "<a href=\"/1.html\">3.8 ML</a>", "html", "href",
                               "</table>", heading + RegionRow(), "<", heading + "<a href=\"/1.html\">d<"}};
}

/// How many sequences there are of up to `length` of so many tokens.
std::size_t Sequences(std::size_t tokens, int length) {
  return length < 0 ? 0 : 1 + tokens * Sequences(tokens, length - 1);
}

/// A scanner does on every page what its plain twin does.
class ScannerTwin : public testing::TestWithParam<TwinCase> {
 protected:
  ScannerTwin() : rig_(*GetParam().twins) {}

  TwinRig rig_;
};

INSTANTIATE_TEST_SUITE_P(Each, ScannerTwin,
                         testing::Values(QuakesList(), MapList(), MapAnchorList(), RegionTable(),
                                         WorldList("WorldList", world_list_twins),
                                         WorldList("WorldHeadline", world_headline_twins)),
                         [](const auto &twin) { return twin.param.name; });

TEST_P(ScannerTwin, AgreesOnAllShortSequencesOfTokens) {
  const TwinCase &twin = GetParam();
  EXPECT_TRUE(rig_.AgreeOnSequences(twin.beginnings, twin.tokens, twin.length));
  EXPECT_EQ(rig_.pages(), twin.beginnings.size() * Sequences(twin.tokens.size(), twin.length));
}

TEST_P(ScannerTwin, AgreesOnAllShortSequencesOfTokensWithLongRunsOfBlanks) {
  const TwinCase &twin = GetParam();
  Texts tokens = twin.tokens;
  tokens.push_back(long_run);
  Texts far_beginnings = twin.beginnings;
  for (std::string &beginning : far_beginnings)
    beginning += long_run;
  EXPECT_TRUE(rig_.AgreeOnSequences(twin.beginnings, tokens, twin.length_with_runs));
  EXPECT_TRUE(rig_.AgreeOnSequences(far_beginnings, tokens, 1));
  EXPECT_EQ(rig_.pages(),
            twin.beginnings.size() * (Sequences(tokens.size(), twin.length_with_runs) + Sequences(tokens.size(), 1)));
}

TEST_P(ScannerTwin, AgreesOnAPageCutAnywhere) {
  for (const std::string &page : GetParam().samples)
    EXPECT_TRUE(rig_.AgreeOnCuts(page));
}

TEST_P(ScannerTwin, AgreesOnAPageWithOneCharacterWrong) {
  for (const std::string &page : GetParam().samples)
    EXPECT_TRUE(rig_.AgreeOnOneWrongCharacter(page, GetParam().characters));
}

TEST_P(ScannerTwin, AgreesOnRandomPages) {
  EXPECT_TRUE(rig_.AgreeOnRandomPages(GetParam().pieces, 3000, GetParam().shortest, GetParam().longest));
}

TEST_P(ScannerTwin, AgreesOnRandomPagesThatAreLong) {
  EXPECT_TRUE(rig_.AgreeOnRandomPages(GetParam().pieces_of_long_pages, 80, 2, 11));
}

}  // namespace
}  // namespace borvane
