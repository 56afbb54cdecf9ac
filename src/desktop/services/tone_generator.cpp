#include "desktop/services/tone_generator.h"

#include <cmath>
#include <cstddef>
#include <numbers>

namespace borvane {

void ToneGenerator::Generate(std::int32_t frequency, std::span<std::int16_t> samples) {
  constexpr std::int32_t frequency_limit = rate / 2;
  const bool is_tone = frequency > 0 && frequency < frequency_limit;
  cycles_per_sample_ = is_tone ? static_cast<double>(frequency) / rate : 0;
  if (!is_tone)
    phase_ = 0;
  for (std::int16_t &sample : samples)
    sample = static_cast<std::int16_t>(std::lround(NextSample()));
}

void ToneGenerator::Fade(std::span<std::int16_t> samples) {
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double loudness = 1 - static_cast<double>(i + 1) / static_cast<double>(samples.size());
    samples[i] = static_cast<std::int16_t>(std::lround(NextSample() * loudness));
  }
  cycles_per_sample_ = 0;
  phase_ = 0;
}

double ToneGenerator::NextSample() {
  const double sample = amplitude * std::sin(2 * std::numbers::pi * phase_);
  phase_ += cycles_per_sample_;
  phase_ -= std::floor(phase_);
  return sample;
}

}  // namespace borvane
