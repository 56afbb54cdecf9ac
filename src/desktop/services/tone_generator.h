#pragma once

#include <cstdint>
#include <span>

namespace borvane {

/// The samples of consecutive tones. A tone goes on where the one before it has ended, so that nothing clicks between
/// two of them, and both have their exact frequency and length.
class ToneGenerator {
 public:
  /// Samples a second; a whole number of them is in a millisecond.
  static constexpr int rate = 48'000;
  static constexpr int samples_per_millisecond = rate / 1000;

  /// The loudest sample.
  static constexpr double amplitude = 8'000;

  /// Fills `samples` with a tone of `frequency` hertz. What the rate cannot carry, or is no frequency, is silence.
  void Generate(std::int32_t frequency, std::span<std::int16_t> samples);

  /// Fills `samples` with the end of the last tone, which fades away. The next tone starts again.
  void Fade(std::span<std::int16_t> samples);

 private:
  double NextSample();

  double cycles_per_sample_ = 0;
  double phase_ = 0;  // in cycles, from 0 up to 1
};

}  // namespace borvane
