#include "common/letters.h"

#include <gtest/gtest.h>

namespace borvane {
namespace {

TEST(EqualInAnyCase, ForgivesTheCaseOfLettersAlone) {
  EXPECT_TRUE(EqualInAnyCase("", ""));
  EXPECT_TRUE(EqualInAnyCase("AZ-az-09", "az-AZ-09"));
  EXPECT_FALSE(EqualInAnyCase("server", "serve"));
  EXPECT_FALSE(EqualInAnyCase("serve", "server"));
  // A bit apart from each other as the two cases of a letter are.
  EXPECT_FALSE(EqualInAnyCase("@[", "`{"));
  EXPECT_FALSE(EqualInAnyCase("\xC4", "\xE4"));
}

}  // namespace
}  // namespace borvane
