#include "basic/text.h"

#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "support/failure_of.h"
#include "support/plain_text.h"

namespace borvane {
namespace {

constexpr int largest = std::numeric_limits<int>::max();
constexpr int smallest = std::numeric_limits<int>::min();

TEST(Find, CountsPositionsFromOne) {
  EXPECT_EQ(Find("quake", "q"), 1);
  EXPECT_EQ(Find("quake", "ke"), 4);
  EXPECT_EQ(Find("quake", "quake"), 1);
}

TEST(Find, ReturnsZeroWhenNothingIsFound) {
  EXPECT_EQ(Find("quake", "x"), 0);
  EXPECT_EQ(Find("quake", "quakes"), 0);
  EXPECT_EQ(Find("", "q"), 0);
}

TEST(Find, IsExactCase) { EXPECT_EQ(Find("QUAKE", "quake"), 0); }

TEST(Find, StartsAtTheGivenPosition) {
  EXPECT_EQ(Find("a-a-a", "a", 1), 1);
  EXPECT_EQ(Find("a-a-a", "a", 2), 3);
  EXPECT_EQ(Find("a-a-a", "a", 5), 5);
}

TEST(Find, ReturnsThePositionInTheWholeText) { EXPECT_EQ(Find("0123456789", "7", 5), 8); }

TEST(Find, FindsNothingPastTheEnd) {
  EXPECT_EQ(Find("a-a-a", "a", 6), 0);
  EXPECT_EQ(Find("a-a-a", "a", largest), 0);
}

TEST(Find, FindsAnEmptyTextWhereItStartsWithinTheText) {
  EXPECT_EQ(Find("abc", ""), 1);
  EXPECT_EQ(Find("abc", "", 3), 3);
  EXPECT_EQ(Find("abc", "", 4), 0);
  EXPECT_EQ(Find("", ""), 0);
}

TEST(Find, RaisesAnInvalidArgumentBelowPositionOne) {
  for (const int from : {0, -1, smallest}) {
    EXPECT_EQ(FailureOf([&] { Find("abc", "b", from); }), invalid_argument) << from;
    EXPECT_EQ(FailureOf([&] { Find("", "", from); }), invalid_argument) << from;
  }
}

TEST(Find, TreatsZeroAndHighBytesLikeAnyOther) {
  using namespace std::string_view_literals;
  EXPECT_EQ(Find("a\0b\xE9z"sv, "\xE9"sv), 4);
  EXPECT_EQ(Find("a\0b"sv, "\0b"sv), 2);
  EXPECT_EQ(Find("a\xC9"sv, "\xE9"sv), 0);
}

TEST(Find, WorksBeyondSixteenBits) {
  const std::string text = std::string(1'000'000, ' ') + "<";
  EXPECT_EQ(Find(text, "<"), 1'000'001);
}

TEST(Piece, ReturnsThatManyCharactersFromThePosition) {
  EXPECT_EQ(Piece("0123456789", 1, 3), "012");
  EXPECT_EQ(Piece("0123456789", 4, 1), "3");
  EXPECT_EQ(Piece("0123456789", 10, 1), "9");
}

TEST(Piece, ReturnsWhatIsLeftWhenTheTextIsShorter) {
  EXPECT_EQ(Piece("0123456789", 9, 5), "89");
  EXPECT_EQ(Piece("0123456789", 1, largest), "0123456789");
}

TEST(Piece, IsEmptyPastTheEnd) {
  EXPECT_EQ(Piece("abc", 4, 1), "");
  EXPECT_EQ(Piece("abc", largest, largest), "");
  EXPECT_EQ(Piece("", 1, 1), "");
}

TEST(Piece, IsEmptyForALengthOfZero) { EXPECT_EQ(Piece("abc", 2, 0), ""); }

TEST(Piece, RaisesAnInvalidArgumentBelowPositionOne) {
  for (const int from : {0, -1, smallest}) {
    EXPECT_EQ(FailureOf([&] { Piece("abc", from, 1); }), invalid_argument) << from;
    EXPECT_EQ(FailureOf([&] { Piece("abc", from, 0); }), invalid_argument) << from;
  }
}

TEST(Piece, RaisesAnInvalidArgumentBelowLengthZero) {
  for (const int length : {-1, smallest}) {
    EXPECT_EQ(FailureOf([&] { Piece("abc", 1, length); }), invalid_argument) << length;
    EXPECT_EQ(FailureOf([&] { Piece("abc", 9, length); }), invalid_argument) << length;
  }
}

TEST(Piece, PointsIntoTheText) {
  const std::string text = "0123456789";
  EXPECT_EQ(Piece(text, 4, 2).data(), text.data() + 3);
}

TEST(RestFrom, ReturnsEverythingFromThePosition) {
  EXPECT_EQ(RestFrom("abc", 1), "abc");
  EXPECT_EQ(RestFrom("abc", 3), "c");
}

TEST(RestFrom, IsEmptyPastTheEnd) {
  EXPECT_EQ(RestFrom("abc", 4), "");
  EXPECT_EQ(RestFrom("abc", largest), "");
  EXPECT_EQ(RestFrom("", 1), "");
}

TEST(RestFrom, RaisesAnInvalidArgumentBelowPositionOne) {
  for (const int n : {0, -1, smallest})
    EXPECT_EQ(FailureOf([&] { RestFrom("abc", n); }), invalid_argument) << n;
}

TEST(RestFrom, PointsIntoTheText) {
  const std::string text = "0123456789";
  EXPECT_EQ(RestFrom(text, 4).data(), text.data() + 3);
}

TEST(Trim, RemovesBlanksAtBothEnds) {
  EXPECT_EQ(Trim("  ab "), "ab");
  EXPECT_EQ(Trim("ab"), "ab");
}

TEST(Trim, KeepsBlanksInside) { EXPECT_EQ(Trim(" a  b "), "a  b"); }

TEST(Trim, KeepsEveryCharacterThatIsNotABlank) {
  for (const std::string_view kept : {"\ta\t", "\na\n", "\ra\r", "\va\v", "\fa\f", "\240a\240"})
    EXPECT_EQ(Trim(std::string(" ").append(kept).append(" ")), kept);
  EXPECT_EQ(Trim(std::string_view("\0 ", 2)), std::string_view("\0", 1));
}

TEST(Trim, IsEmptyForBlanks) {
  EXPECT_EQ(Trim(""), "");
  EXPECT_EQ(Trim(" "), "");
  EXPECT_EQ(Trim("     "), "");
}

/// All texts of up to `length` characters from `alphabet`.
std::vector<std::string> AllTexts(std::string_view alphabet, std::size_t length) {
  std::vector<std::string> texts{""};
  for (std::size_t i = 0; i < texts.size() && texts[i].size() < length; ++i) {
    for (const char c : alphabet)
      texts.push_back(texts[i] + c);
  }
  return texts;
}

/// Compares two ways to the same result, failures included.
template <typename Quick, typename Plain>
void Compare(Quick quick, Plain plain, const std::string &shown) {
  const int failure = FailureOf(plain);
  ASSERT_EQ(FailureOf(quick), failure) << shown;
  if (failure == 0) {
    ASSERT_EQ(quick(), plain()) << shown;
  }
}

TEST(Find, AgreesWithThePlainRuleOnEveryShortText) {
  const std::vector<std::string> searched = AllTexts("a<", 3);
  for (const std::string &text : AllTexts("a<", 7)) {
    for (const std::string &what : searched) {
      for (int from = -1; from <= 9; ++from) {
        Compare([&] { return Find(text, what, from); }, [&] { return plain::Find(text, what, from); },
                "'" + what + "' in '" + text + "' from " + std::to_string(from));
      }
    }
  }
}

TEST(Piece, AgreesWithThePlainRuleOnEveryShortText) {
  for (const std::string &text : AllTexts("a\n ", 4)) {
    for (int from = -1; from <= 6; ++from) {
      for (int length = -1; length <= 6; ++length) {
        Compare([&] { return std::string(Piece(text, from, length)); },
                [&] { return plain::Piece(text, from, length); },
                "'" + text + "' from " + std::to_string(from) + ", length " + std::to_string(length));
      }
    }
  }
}

TEST(RestFrom, AgreesWithThePlainRuleOnEveryShortText) {
  for (const std::string &text : AllTexts("a\n ", 4)) {
    for (int n = -1; n <= 6; ++n) {
      Compare([&] { return std::string(RestFrom(text, n)); }, [&] { return plain::RestFrom(text, n); },
              "'" + text + "' from " + std::to_string(n));
    }
  }
}

TEST(Trim, AgreesWithThePlainRuleOnEveryShortText) {
  for (const std::string &text : AllTexts("a\t ", 7))
    EXPECT_EQ(Trim(text), plain::Trim(text));
}

TEST(ProperCase, CapitalizesTheFirstLetterOfEachWordAndMakesTheRestSmall) {
  EXPECT_EQ(ProperCase("ann lee"), "Ann Lee");
  EXPECT_EQ(ProperCase("ANN LEE"), "Ann Lee");
  EXPECT_EQ(ProperCase("aNN lEE"), "Ann Lee");
  EXPECT_EQ(ProperCase("a"), "A");
  EXPECT_EQ(ProperCase(""), "");
}

TEST(ProperCase, PartsWordsByBlanksAlone) {
  EXPECT_EQ(ProperCase("  van  der   berg "), "  Van  Der   Berg ");
  EXPECT_EQ(ProperCase("O'NEIL-SMITH"), "O'neil-smith");
  EXPECT_EQ(ProperCase("3RD STREET"), "3rd Street");
  EXPECT_EQ(ProperCase("(ANN) LEE"), "(ann) Lee");
  EXPECT_EQ(ProperCase("ann\tlee\nmay"), "Ann\tlee\nmay");
}

TEST(ProperCase, KnowsTheLettersOfTheCodePage) {
  EXPECT_EQ(ProperCase("\xE9MILE"), "\xC9mile");
  EXPECT_EQ(ProperCase("JOS\xC9"), "Jos\xE9");
  EXPECT_EQ(ProperCase("\x9A\x8A \x9C\x8C \x9E\x8E \xFF\x9F"), "\x8A\x9A \x8C\x9C \x8E\x9E \x9F\xFF");
}

/// What is no letter, or has no other form, stays at every place of a word.
TEST(ProperCase, LeavesWhatHasOneFormAlone) {
  for (int code = 0; code < 256; ++code) {
    const std::string one(1, static_cast<char>(code));
    const std::string small = ProperCase("x" + one).substr(1);
    const std::string capital = ProperCase(one);
    const bool has_two_forms = small != capital;
    EXPECT_EQ(ProperCase("x" + capital).substr(1), small) << code;
    EXPECT_EQ(ProperCase(small), capital) << code;
    if (!has_two_forms) {
      EXPECT_EQ(small, one) << code;
    }
  }
  EXPECT_EQ(ProperCase("x\xD7\xF7\xDF\x83"), "X\xD7\xF7\xDF\x83");
  EXPECT_EQ(ProperCase("\xD7 \xF7 \xDF \x83"), "\xD7 \xF7 \xDF \x83");
}

}  // namespace
}  // namespace borvane
