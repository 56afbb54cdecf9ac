#include <random>

#include <gtest/gtest.h>

#include "scan/scanners.h"
#include "support/failure_of.h"
#include "support/plain_quakes_list.h"
#include "support/program/watching_rig.h"
#include "support/scan_case.h"

namespace borvane {
namespace {

const std::string marker = "/recenteqs/Quakes/";
const std::string long_run(32700, ' ');

/// A started program that scans one page after another.
class TwinRig : public Rig {
 public:
  TwinRig() { start(); }

  /// Compares the results of the two scanners for `page`. Returns false at the first difference.
  bool Agree(const std::string &page) {
    ++pages_;
    const plain::ScanResult expected = plain::ScanQuakesList(page);
    const plain::ScanResult got = Scan(page);
    if (got == expected)
      return true;
    ADD_FAILURE() << "page " << Escaped(page) << "\n" << Shown(got) << "and the plain scanner:\n" << Shown(expected);
    return false;
  }

  int pages() const { return pages_; }

 private:
  static plain::ScanResult Scan(std::string page) {
    plain::ScanResult result;
    Integer mode = 3;
    result.failure = FailureOf([&] { ScanQuakesList(mode, page); });
    for (int number = 1; number <= frmRecords->ListView1.ListItems.Count(); ++number) {
      const ListItem &item = frmRecords->ListView1.ListItems(number);
      auto &row = result.rows.emplace_back();
      row[0] = item.Text;
      for (int slot = 2; slot <= 8; ++slot)
        row[static_cast<std::size_t>(slot - 1)] = item.SubItems(slot - 1);
    }
    result.rest = std::move(page);
    return result;
  }

  static std::string Shown(const plain::ScanResult &result) {
    std::string text;
    for (const auto &row : result.rows) {
      for (const std::string &field : row)
        text += "|" + Escaped(field);
      text += "|\n";
    }
    return text + "failure " + std::to_string(result.failure) + ", left " + Escaped(result.rest) + "\n";
  }

  int pages_ = 0;
};

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

/// Tries every sequence of up to `length` of `tokens` after `page`.
bool AgreeAfter(TwinRig &rig, const std::string &page, const std::vector<std::string> &tokens, int length) {
  if (!rig.Agree(page))
    return false;
  for (const std::string &token : tokens) {
    if (length > 0 && !AgreeAfter(rig, page + token, tokens, length - 1))
      return false;
  }
  return true;
}

const std::vector<std::string> short_tokens = {marker, "<", ">", "=", " ", "\n", "a"};

// A build for debugging is some ten times slower, and tries one token less.
#ifdef NDEBUG
constexpr int tokens_after = 5;
#else
constexpr int tokens_after = 4;
#endif

TEST(ScanQuakesListTwin, AgreesOnAllShortSequencesOfTokens) {
  TwinRig rig;
  for (const std::string &beginning : Beginnings())
    ASSERT_TRUE(AgreeAfter(rig, beginning, short_tokens, tokens_after));
  EXPECT_GE(rig.pages(), 10 * (1 + 7 + 49 + 343 + 2401));
}

TEST(ScanQuakesListTwin, AgreesOnAllShortSequencesOfTokensWithLongRunsOfBlanks) {
  std::vector<std::string> tokens = short_tokens;
  tokens.push_back(long_run);
  TwinRig rig;
  for (const std::string &beginning : Beginnings()) {
    ASSERT_TRUE(AgreeAfter(rig, beginning, tokens, 2));
    ASSERT_TRUE(AgreeAfter(rig, beginning + long_run, tokens, 1));
  }
  EXPECT_EQ(rig.pages(), 10 * (1 + 8 + 64 + 1 + 8));
}

/// A page of realistic rows.
const std::string sample = Page(Row("2.0", "4 km W of Castaic, CA") + Row("1.6", "6 km ENE of Yucaipa, CA"));

TEST(ScanQuakesListTwin, AgreesOnAPageCutAnywhere) {
  TwinRig rig;
  for (std::size_t length = 0; length <= sample.size(); ++length) {
    ASSERT_TRUE(rig.Agree(sample.substr(0, length)));
    ASSERT_TRUE(rig.Agree(sample.substr(length)));
  }
}

TEST(ScanQuakesListTwin, AgreesOnAPageWithOneCharacterWrong) {
  TwinRig rig;
  for (std::size_t position = 0; position < sample.size(); ++position) {
    std::string without = sample;
    without.erase(position, 1);
    ASSERT_TRUE(rig.Agree(without));
    for (const char other : {'<', '>', '=', ' ', '\n'}) {
      std::string changed = sample;
      changed[position] = other;
      ASSERT_TRUE(rig.Agree(changed));
      ASSERT_TRUE(rig.Agree(std::string(sample).insert(position, 1, other)));
    }
  }
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
  TwinRig rig;
  std::mt19937 random(20180207);
  for (int page = 0; page < 3000; ++page) {
    std::string text;
    for (auto length = 5 + random() % 40; length > 0; --length)
      text += pieces[random() % pieces.size()];
    ASSERT_TRUE(rig.Agree(text));
  }
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
  TwinRig rig;
  std::mt19937 random(5);
  for (int page = 0; page < 60; ++page) {
    std::string text;
    for (auto length = 2 + random() % 10; length > 0; --length)
      text += pieces[random() % pieces.size()];
    ASSERT_TRUE(rig.Agree(text));
  }
}

}  // namespace
}  // namespace borvane
