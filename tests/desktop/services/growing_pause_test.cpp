#include "desktop/services/growing_pause.h"

#include <gtest/gtest.h>

namespace borvane {
namespace {

using namespace std::chrono_literals;

TEST(GrowingPause, DoublesUpToTheLongestAndStaysThere) {
  GrowingPause pause(100ms, 60s);
  for (const auto expected : {100ms, 200ms, 400ms, 800ms, 1600ms, 3200ms, 6400ms, 12800ms, 25600ms, 51200ms})
    EXPECT_EQ(pause.Next(), expected);
  EXPECT_EQ(pause.Next(), 60s);
  EXPECT_EQ(pause.Next(), 60s);
}

TEST(GrowingPause, StartsOverAfterASuccess) {
  GrowingPause pause(100ms, 60s);
  pause.Next();
  pause.Next();
  pause.Reset();
  EXPECT_EQ(pause.Next(), 100ms);
}

}  // namespace
}  // namespace borvane
