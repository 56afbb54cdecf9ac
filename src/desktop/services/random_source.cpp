#include "desktop/services/random_source.h"

#include <bit>
#include <cmath>
#include <cstdint>

namespace borvane {

void TwisterRandomSource::Seed(double seed) { engine_.seed(std::bit_cast<std::uint64_t>(seed)); }

double TwisterRandomSource::Next() {
  // As many bits as a double holds exactly, so that the result never rounds up to 1.
  constexpr int bits = 53;
  return std::ldexp(static_cast<double>(engine_() >> (64 - bits)), -bits);
}

}  // namespace borvane
