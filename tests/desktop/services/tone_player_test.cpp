#include "desktop/services/tone_player.h"

#include <functional>
#include <thread>

#include <gtest/gtest.h>
#include <pthread.h>

#include "desktop/services/tone_generator.h"
#include "support/desktop/fake_tone_stream.h"

namespace borvane {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

/// No thread can be created as long as it lives: each would need more memory for its stack than there are addresses.
class NoThreads {
 public:
  NoThreads() {
    ::pthread_getattr_default_np(&before_);
    pthread_attr_t attributes = {};
    ::pthread_getattr_default_np(&attributes);
    ::pthread_attr_setstacksize(&attributes, std::size_t{1} << 62U);
    EXPECT_EQ(::pthread_setattr_default_np(&attributes), 0);
    ::pthread_attr_destroy(&attributes);
  }
  ~NoThreads() {
    ::pthread_setattr_default_np(&before_);
    ::pthread_attr_destroy(&before_);
  }
  NoThreads(const NoThreads &) = delete;
  NoThreads &operator=(const NoThreads &) = delete;

 private:
  pthread_attr_t before_ = {};
};

/// A player that waits for its stream as long as a busy machine needs.
struct PlayerTest : testing::Test {
  std::shared_ptr<FakeLoudspeaker> speaker = std::make_shared<FakeLoudspeaker>();
  TonePlayer player{WayTo(speaker), seconds(20)};

  /// A tone that is followed by others.
  void Play(std::int32_t frequency, milliseconds duration) {
    player.AwaitStream();
    player.Play({.frequency = frequency, .duration = duration, .end = steady_clock::now() + hours(1)});
  }

  /// The last tone of an alarm.
  void PlayLast(std::int32_t frequency, milliseconds duration) {
    player.AwaitStream();
    player.Play({.frequency = frequency, .duration = duration, .end = steady_clock::now()});
  }

  /// Plays last tones, with pauses in which an alarm ends, until `condition` holds. An alarm without a stream ends
  /// unseen.
  void PlayUntil(const std::function<bool()> &condition) {
    const auto timeout = steady_clock::now() + seconds(60);
    while (!condition() && steady_clock::now() < timeout) {
      PlayLast(440, milliseconds(1));
      std::this_thread::sleep_for(milliseconds(700));
    }
  }
};

TEST_F(PlayerTest, OpensNothingBeforeTheFirstTone) { EXPECT_EQ(speaker->Log(), Lines{}); }

TEST_F(PlayerTest, HandsAnAlarmOverInOneStreamAndEndsItAfterTheLastTone) {
  for (int frequency = 100; frequency < 1000; frequency += 10)
    Play(frequency, milliseconds(10));
  PlayLast(1000, milliseconds(10));
  ASSERT_TRUE(speaker->AwaitLine("close"));

  Lines expected = {"open"};
  expected.insert(expected.end(), 91, "write 480");
  expected.insert(expected.end(), {"write 240", "drain", "close"});
  EXPECT_EQ(speaker->Log(), expected);

  ToneGenerator generator;
  std::vector<std::int16_t> samples(91 * 480 + 240);
  const std::span all(samples);
  for (std::size_t tone = 0; tone < 91; ++tone)
    generator.Generate(100 + static_cast<std::int32_t>(tone) * 10, all.subspan(tone * 480, 480));
  generator.Fade(all.last(240));
  EXPECT_EQ(speaker->Samples(), samples);
}

TEST_F(PlayerTest, HandsALongToneOverInPieces) {
  Play(440, milliseconds(250));
  PlayLast(440, milliseconds(1));
  ASSERT_TRUE(speaker->AwaitLine("close"));
  EXPECT_EQ(speaker->Log(),
            (Lines{"open", "write 4800", "write 4800", "write 2400", "write 48", "write 240", "drain", "close"}));
}

TEST_F(PlayerTest, OpensAStreamForEachAlarm) {
  PlayLast(440, milliseconds(1));
  ASSERT_TRUE(speaker->AwaitLine("close"));
  PlayLast(440, milliseconds(1));
  ASSERT_TRUE(speaker->AwaitLine("close", 2));
  EXPECT_EQ(speaker->Log(), (Lines{"open", "write 48", "write 240", "drain", "close", "open", "write 48", "write 240",
                                   "drain", "close"}));
}

TEST_F(PlayerTest, RestartsTheToneAfterAPause) {
  PlayLast(440, milliseconds(1));
  ASSERT_TRUE(speaker->AwaitLine("drain"));
  Play(440, milliseconds(1));
  ASSERT_TRUE(speaker->AwaitLine("write 48", 2));
  const std::vector<std::int16_t> samples = speaker->Samples();
  ASSERT_EQ(samples.size(), 48U + 240 + 48);
  EXPECT_EQ(std::vector(samples.begin(), samples.begin() + 48), std::vector(samples.end() - 48, samples.end()));
}

TEST_F(PlayerTest, IsSilentWithoutALoudspeakerAndLooksForItAgainAtTheNextAlarm) {
  speaker->is_missing = true;
  PlayLast(440, milliseconds(1));
  ASSERT_TRUE(speaker->AwaitLine("missing"));
  speaker->Set(&FakeLoudspeaker::is_missing, false);
  PlayUntil([this] { return speaker->CountOf("write 48") > 0; });
  EXPECT_GT(speaker->CountOf("write 48"), 0);
}

TEST_F(PlayerTest, LooksForALoudspeakerOnceInAnAlarm) {
  speaker->is_missing = true;
  for (int tone = 0; tone < 5; ++tone)
    Play(440, milliseconds(10));
  EXPECT_EQ(speaker->Log(), (Lines{"open", "missing"}));
}

TEST_F(PlayerTest, PassesTheRestOfAnAlarmInSilenceWhenItsStreamFails) {
  speaker->writes_until_failure = 2;
  for (int tone = 0; tone < 5; ++tone)
    Play(440, milliseconds(10));
  PlayLast(440, milliseconds(10));
  ASSERT_TRUE(speaker->AwaitLine("close"));
  EXPECT_EQ(speaker->Log(), (Lines{"open", "write 480", "write 480", "fail", "close"}));
  EXPECT_EQ(speaker->Samples().size(), 2U * 480);
}

TEST_F(PlayerTest, ClosesAStreamThatCannotBeDrainedAndOpensOneForTheNextAlarm) {
  speaker->drains = false;
  PlayLast(440, milliseconds(1));
  ASSERT_TRUE(speaker->AwaitLine("close"));
  speaker->Set(&FakeLoudspeaker::drains, true);
  PlayUntil([this] { return speaker->CountOf("write 48") > 1; });
  Lines log = speaker->Log();
  log.resize(7);
  EXPECT_EQ(log, (Lines{"open", "write 48", "write 240", "drain", "close", "open", "write 48"}));
}

TEST_F(PlayerTest, KeepsNoMoreThanAThousandTonesForAServerThatHasStopped) {
  speaker->takes_samples = false;
  Play(440, milliseconds(1));
  ASSERT_TRUE(speaker->AwaitLine("block"));
  for (int tone = 0; tone < 1'100; ++tone)
    Play(440, milliseconds(1));
  speaker->Set(&FakeLoudspeaker::takes_samples, true);
  ASSERT_TRUE(speaker->AwaitLine("write 48", 1'001)) << "with the one that was being written";
  PlayLast(440, milliseconds(2));
  ASSERT_TRUE(speaker->AwaitLine("write 96"));
  EXPECT_EQ(speaker->CountOf("write 48"), 1'001);
}

TEST_F(PlayerTest, SoundsNothingOfAnAlarmThatShouldHaveBeenOverLongAgo) {
  speaker->takes_samples = false;
  Play(440, milliseconds(1));
  ASSERT_TRUE(speaker->AwaitLine("block"));
  for (int tone = 0; tone < 5; ++tone)
    player.Play({.frequency = 440, .duration = milliseconds(10), .end = steady_clock::now() - seconds(3)});
  PlayLast(440, milliseconds(2));
  speaker->Set(&FakeLoudspeaker::takes_samples, true);
  ASSERT_TRUE(speaker->AwaitLine("write 96"));
  EXPECT_EQ(speaker->CountOf("write 480"), 0);
}

TEST(TonePlayer, EndsWhileAServerThatHasStoppedTakesNothing) {
  const auto speaker = std::make_shared<FakeLoudspeaker>();
  speaker->takes_samples = false;
  {
    TonePlayer player(WayTo(speaker), seconds(20));
    player.AwaitStream();
    for (int tone = 0; tone < 10; ++tone)
      player.Play({.frequency = 440, .duration = milliseconds(250), .end = steady_clock::now() + hours(1)});
    ASSERT_TRUE(speaker->AwaitLine("block"));
  }
  // The player has gone without its thread, which ends after the piece that it was writing.
  speaker->Set(&FakeLoudspeaker::takes_samples, true);
  ASSERT_TRUE(speaker->AwaitLine("close"));
  EXPECT_EQ(speaker->CountOf("write 4800"), 1);
}

TEST(TonePlayer, WaitsForItsStreamForAFifthOfASecond) { EXPECT_EQ(TonePlayer::longest_wait, milliseconds(200)); }

TEST(TonePlayer, WaitsForAServerThatNeverAnswersOnce) {
  const auto speaker = std::make_shared<FakeLoudspeaker>();
  speaker->answers = false;
  {
    TonePlayer player(WayTo(speaker), seconds(2));
    const auto start = steady_clock::now();
    for (int tone = 0; tone < 10; ++tone) {
      player.AwaitStream();
      player.Play({.frequency = 440, .duration = milliseconds(10), .end = steady_clock::now()});
    }
    const auto waited = steady_clock::now() - start;
    EXPECT_GE(waited, seconds(2));
    EXPECT_LT(waited, seconds(15)) << "ten times would be 20 seconds";
    ASSERT_TRUE(speaker->AwaitLine("open"));
  }
  // The player has gone without its thread, which ends when it can.
  speaker->Set(&FakeLoudspeaker::answers, true);
  ASSERT_TRUE(speaker->AwaitLine("close"));
  EXPECT_EQ(speaker->Log(), (Lines{"open", "close"})) << "one stream, and none of the tones";
}

TEST_F(PlayerTest, IsSilentWithoutAThreadAndTriesAgainAtTheNextTone) {
  {
    const NoThreads no_threads;
    PlayLast(440, milliseconds(1));
    EXPECT_EQ(speaker->Log(), Lines{});
  }
  PlayLast(440, milliseconds(1));
  ASSERT_TRUE(speaker->AwaitLine("close"));
  EXPECT_EQ(speaker->Log(), (Lines{"open", "write 48", "write 240", "drain", "close"}));
}

TEST(TonePlayer, SoundsTheTonesThatComeAfterALateAnswer) {
  const auto speaker = std::make_shared<FakeLoudspeaker>();
  speaker->answers = false;
  TonePlayer player(WayTo(speaker), milliseconds(1));
  player.AwaitStream();
  player.Play({.frequency = 440, .duration = milliseconds(10), .end = steady_clock::now()});
  speaker->Set(&FakeLoudspeaker::answers, true);
  const auto timeout = steady_clock::now() + seconds(20);
  while (speaker->Samples().empty() && steady_clock::now() < timeout) {
    player.Play({.frequency = 440, .duration = milliseconds(1), .end = steady_clock::now()});
    std::this_thread::sleep_for(milliseconds(1));
  }
  EXPECT_FALSE(speaker->Samples().empty());
}

}  // namespace
}  // namespace borvane
