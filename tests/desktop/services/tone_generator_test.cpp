#include "desktop/services/tone_generator.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace borvane {
namespace {

using Samples = std::vector<std::int16_t>;

Samples Generated(ToneGenerator &generator, std::int32_t frequency, int milliseconds) {
  Samples samples(static_cast<std::size_t>(milliseconds) * 48);
  generator.Generate(frequency, samples);
  return samples;
}

/// How often the samples rise through zero: once in each cycle.
int Cycles(const Samples &samples) {
  int cycles = 0;
  for (std::size_t i = 1; i < samples.size(); ++i)
    cycles += samples[i - 1] < 0 && samples[i] >= 0 ? 1 : 0;
  return cycles;
}

int LargestStep(const Samples &samples) {
  int largest = 0;
  for (std::size_t i = 1; i < samples.size(); ++i)
    largest = std::max(largest, std::abs(samples[i] - samples[i - 1]));
  return largest;
}

int Loudest(const Samples &samples) {
  int loudest = 0;
  for (const int sample : samples)
    loudest = std::max(loudest, std::abs(sample));
  return loudest;
}

TEST(ToneGenerator, HasTheExactFrequency) {
  for (const int frequency : {1, 37, 100, 440, 1000, 12'345, 23'999}) {
    ToneGenerator generator;
    const Samples second = Generated(generator, frequency, 1000);
    EXPECT_NEAR(Cycles(second), frequency, 1) << frequency;
    for (std::size_t i = 0; i < second.size(); ++i)
      ASSERT_NEAR(second[i], 8000 * std::sin(2 * M_PI * frequency * static_cast<double>(i) / 48'000), 1) << frequency;
  }
}

TEST(ToneGenerator, GoesOnWithoutAStepFromToneToTone) {
  ToneGenerator generator;
  Samples sweep;
  for (int frequency = 100; frequency <= 1000; frequency += 10) {
    const Samples tone = Generated(generator, frequency, 10);
    sweep.insert(sweep.end(), tone.begin(), tone.end());
  }
  EXPECT_EQ(sweep.size(), 91U * 480);
  const double steepest = 8000 * 2 * M_PI * 1000 / 48'000;
  EXPECT_LE(LargestStep(sweep), steepest + 1);
  EXPECT_EQ(Loudest(sweep), 8000);
  const double cycles = 91 * 550 * 0.010;
  EXPECT_NEAR(Cycles(sweep), cycles, 1);
}

TEST(ToneGenerator, IsTheSameInOnePieceAndInSeveral) {
  ToneGenerator whole;
  ToneGenerator parts;
  const Samples expected = Generated(whole, 440, 30);
  Samples joined;
  for (const int length : {1, 9, 20}) {
    const Samples part = Generated(parts, 440, length);
    joined.insert(joined.end(), part.begin(), part.end());
  }
  EXPECT_EQ(joined, expected);
}

TEST(ToneGenerator, IsSilentForWhatTheRateCannotCarry) {
  for (const std::int32_t frequency : {0, -1, -440, 24'000, 32'767, std::numeric_limits<std::int32_t>::min(),
                                       std::numeric_limits<std::int32_t>::max()}) {
    ToneGenerator generator;
    Generated(generator, 440, 1);
    EXPECT_EQ(Loudest(Generated(generator, frequency, 10)), 0) << frequency;
    EXPECT_EQ(Generated(generator, 440, 1)[0], 0) << "what follows starts again";
  }
}

TEST(ToneGenerator, FadesTheEndOfTheLastTone) {
  ToneGenerator generator;
  const Samples tone = Generated(generator, 990, 5);
  Samples fade(240);
  generator.Fade(fade);
  Samples both = tone;
  both.insert(both.end(), fade.begin(), fade.end());
  EXPECT_LE(LargestStep(both), 8000 * 2 * M_PI * 990 / 48'000 + 8000.0 / 240 + 1);
  EXPECT_EQ(fade.back(), 0);
  EXPECT_LT(Loudest(Samples(fade.begin() + 192, fade.end())), 8000 / 4);
  EXPECT_GT(Loudest(Samples(fade.begin(), fade.begin() + 48)), 8000 / 2);
  EXPECT_EQ(Generated(generator, 440, 1)[0], 0) << "what follows starts again";
}

TEST(ToneGenerator, FadesSilenceToSilence) {
  ToneGenerator generator;
  Samples fade(240, 1);
  generator.Fade(fade);
  EXPECT_EQ(Loudest(fade), 0);
}

}  // namespace
}  // namespace borvane
