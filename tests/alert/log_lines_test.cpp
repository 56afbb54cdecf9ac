#include "alert/log_lines.h"

#include <gtest/gtest.h>

namespace borvane {
namespace {

/// The text in pieces of that size, and what is found of `expected` in it: the lines with their end, and the rest.
std::string Found(std::string_view text, std::size_t size, const std::vector<std::string> &expected) {
  LogLines lines(expected);
  for (std::string_view left = text; !left.empty(); left.remove_prefix(std::min(size, left.size())))
    lines.Take(left.substr(0, size));
  std::string found;
  for (const std::string &line : expected)
    found += lines.Contains(line) ? "[" + line + "]" : "";
  return found + std::string(lines.rest());
}

constexpr std::size_t longest_piece = 12;

TEST(LogLines, FindsWholeLinesHoweverTheTextIsDivided) {
  for (std::size_t size = 1; size <= longest_piece; ++size) {
    EXPECT_EQ(Found("2.0 A\r\n3.1 B\r\n", size, {"2.0 A", "3.1 B", "4.2 C"}), "[2.0 A][3.1 B]") << size;
    EXPECT_EQ(Found("2.0 AB\r\nx2.0 A\r\n", size, {"2.0 A"}), "") << size;
    EXPECT_EQ(Found("2.0 a\r\n", size, {"2.0 A"}), "") << size;
    EXPECT_EQ(Found("\r\n", size, {""}), "[]") << size;
    EXPECT_EQ(Found("", size, {""}), "") << size;
  }
}

TEST(LogLines, KeepsWhatFollowsTheLastLineEndApart) {
  for (std::size_t size = 1; size <= longest_piece; ++size) {
    EXPECT_EQ(Found("2.0 A\r\n3.1 B", size, {"2.0 A", "3.1 B"}), "[2.0 A]3.1 B") << size;
    EXPECT_EQ(Found("3.1 B\r", size, {"3.1 B", "3.1 B\r"}), "3.1 B\r") << size;
  }
}

TEST(LogLines, LeavesALoneReturnOrFeedInsideItsLine) {
  for (std::size_t size = 1; size <= longest_piece; ++size) {
    EXPECT_EQ(Found("a\rb\r\nc\nd\r\n", size, {"a\rb", "c\nd", "a", "b", "c", "d"}), "[a\rb][c\nd]") << size;
    EXPECT_EQ(Found("a\r\r\n\nb\r\n", size, {"a\r", "a", "\nb", "b"}), "[a\r][\nb]") << size;
    EXPECT_EQ(Found("a\n\r\r\n", size, {"a\n\r", "a"}), "[a\n\r]") << size;
  }
}

TEST(LogLines, TakesZeroAndEndOfFileForBytesLikeAnyOther) {
  using namespace std::string_literals;
  for (std::size_t size = 1; size <= longest_piece; ++size)
    EXPECT_EQ(Found("a\0b\x1A"s + "c\r\nd\r\n", size, {"a\0b\x1A"s + "c", "d", "a"}), "[a\0b\x1A"s + "c][d]") << size;
}

TEST(LogLines, KeepsNoMoreOfALongLineThanDistinguishesItFromTheExpectedOnes) {
  const std::string long_line(1'000'000, 'x');
  const std::vector<std::string> expected = {"xxx", "yy"};
  LogLines lines(expected);
  for (int piece = 0; piece < 10; ++piece) {
    lines.Take(long_line);
    EXPECT_EQ(lines.rest(), "xxxxx");
  }
  lines.Take("\r");
  lines.Take("\nyy\r\n");
  EXPECT_EQ(lines.rest(), "");
  EXPECT_FALSE(lines.Contains("xxx"));
  EXPECT_TRUE(lines.Contains("yy"));
}

TEST(LogLines, DistinguishesALineThatIsLongerByAnyNumberOfBytes) {
  for (std::size_t size = 1; size <= longest_piece; ++size) {
    for (std::size_t more = 1; more <= 4; ++more) {
      EXPECT_EQ(Found("xxx" + std::string(more, 'x') + "\r\n", size, {"xxx"}), "") << size << " " << more;
      EXPECT_EQ(Found("xxx" + std::string(more, '\r') + "\r\n", size, {"xxx"}), "") << size << " " << more;
    }
  }
}

TEST(LogLines, ForgetsEverythingWhenANewTextBegins) {
  const std::vector<std::string> expected = {"a", "b"};
  LogLines lines(expected);
  lines.Take("a\r\nrest\r");
  lines.Clear();
  EXPECT_FALSE(lines.Contains("a"));
  EXPECT_EQ(lines.rest(), "");
  lines.Take("\nb\r\n");
  EXPECT_FALSE(lines.Contains("b")) << "the line feed begins the new text's first line";
}

}  // namespace
}  // namespace borvane
