#include "feed/service.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

namespace borvane {
namespace {

TEST(VersionDigits, JoinsTheThreeNumbersOfTheVersion) {
  std::string version = BORVANE_VERSION;
  EXPECT_EQ(std::count(version.begin(), version.end(), '.'), 2);
  std::erase(version, '.');
  EXPECT_EQ(VersionDigits(), version);
}

}  // namespace
}  // namespace borvane
