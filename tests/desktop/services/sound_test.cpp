#include "desktop/services/sound.h"

#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "support/desktop/fake_tone_stream.h"

namespace borvane {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/// A loudspeaker of the desktop with a fake one, for whose stream it waits as long as a busy machine needs.
struct DesktopSoundTest : testing::Test {
  std::shared_ptr<FakeLoudspeaker> speaker = std::make_shared<FakeLoudspeaker>();
  DesktopSound sound{WayTo(speaker), std::chrono::seconds(20)};
};

TEST_F(DesktopSoundTest, SoundsAToneAndReturnsWhenItIsOver) {
  const auto start = steady_clock::now();
  sound.Beep(440, 60);
  EXPECT_GE(steady_clock::now() - start, milliseconds(60));
  ASSERT_TRUE(speaker->AwaitLine("close"));
  EXPECT_EQ(speaker->Log(), (Lines{"open", "write 2880", "write 240", "drain", "close"}));
}

TEST_F(DesktopSoundTest, PassesALengthOfZeroOrBelowAtOnce) {
  for (const std::int32_t length : {0, -1, std::numeric_limits<std::int32_t>::min()})
    sound.Beep(440, length);
  EXPECT_EQ(speaker->Log(), Lines{});
}

TEST_F(DesktopSoundTest, LastsAsLongWithoutALoudspeaker) {
  speaker->is_missing = true;
  const auto start = steady_clock::now();
  for (int tone = 0; tone < 5; ++tone)
    sound.Beep(440, 10);
  EXPECT_GE(steady_clock::now() - start, milliseconds(50));
  EXPECT_GT(speaker->CountOf("missing"), 0);
  EXPECT_EQ(speaker->Samples().size(), 0U);
}

TEST_F(DesktopSoundTest, KeepsItsTimeWhileTheServerTakesNothing) {
  speaker->takes_samples = false;
  const auto start = steady_clock::now();
  for (int tone = 0; tone < 5; ++tone)
    sound.Beep(440, 10);
  EXPECT_GE(steady_clock::now() - start, milliseconds(50));
  ASSERT_TRUE(speaker->AwaitLine("block"));
  EXPECT_EQ(speaker->Log(), (Lines{"open", "block"}));
  speaker->Set(&FakeLoudspeaker::takes_samples, true);
  EXPECT_TRUE(speaker->AwaitLine("close"));
}

TEST_F(DesktopSoundTest, LastsAsLongWhenTheServerDies) {
  speaker->writes_until_failure = 1;
  const auto start = steady_clock::now();
  for (int tone = 0; tone < 5; ++tone)
    sound.Beep(440, 10);
  EXPECT_GE(steady_clock::now() - start, milliseconds(50));
  EXPECT_TRUE(speaker->AwaitLine("fail"));
}

TEST_F(DesktopSoundTest, TakesAbsurdFrequencies) {
  for (const std::int32_t frequency :
       {0, -440, std::numeric_limits<std::int32_t>::min(), 32'767, std::numeric_limits<std::int32_t>::max()})
    sound.Beep(frequency, 1);
  ASSERT_TRUE(speaker->AwaitLine("write 48", 5));
  // A busy machine may fade between two of them.
  const std::vector<std::int16_t> samples = speaker->Samples();
  EXPECT_GE(samples.size(), 5U * 48);
  EXPECT_EQ(samples, std::vector<std::int16_t>(samples.size()));
}

}  // namespace
}  // namespace borvane
