#include "controls/packed_texts.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace borvane {
namespace {

TEST(PackedTexts, ReturnsEachText) {
  const PackedTexts texts = {"Area", "", std::string_view("a\0b", 3), "Time Recorded"};
  EXPECT_EQ(texts(1), "Area");
  EXPECT_EQ(texts(2), "");
  EXPECT_EQ(texts(3), std::string_view("a\0b", 3));
  EXPECT_EQ(texts(4), "Time Recorded");
}

TEST(PackedTexts, IsEmptyWhereNothingHasBeenSet) {
  EXPECT_EQ(PackedTexts()(1), "");
  EXPECT_EQ(PackedTexts(std::span<const std::string_view>())(1), "");
  EXPECT_EQ(PackedTexts({"x"})(2), "");
  EXPECT_EQ(PackedTexts({"x"})(2'000'000'000), "");
}

TEST(PackedTexts, HoldsTheTextsOfAList) {
  const std::string long_text(100'000, 'x');
  const std::vector<std::string_view> list = {"one", long_text, "three"};
  const PackedTexts texts(list);
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(texts(i + 1), list[static_cast<std::size_t>(i)]);
}

TEST(PackedTexts, SetsATextAndLeavesTheOthers) {
  PackedTexts texts = {"one", "two", "three"};
  texts.Set(2, "a longer text");
  EXPECT_EQ(texts(1), "one");
  EXPECT_EQ(texts(2), "a longer text");
  EXPECT_EQ(texts(3), "three");

  texts.Set(5, "five");
  EXPECT_EQ(texts(3), "three");
  EXPECT_EQ(texts(4), "");
  EXPECT_EQ(texts(5), "five");
}

TEST(PackedTexts, SetsATextToAnotherOfItsOwn) {
  PackedTexts texts = {"one", "two"};
  texts.Set(1, texts(2));
  texts.Set(4, texts(1));
  EXPECT_EQ(texts(1), "two");
  EXPECT_EQ(texts(2), "two");
  EXPECT_EQ(texts(4), "two");
}

}  // namespace
}  // namespace borvane
