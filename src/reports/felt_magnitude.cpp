#include "reports/felt_magnitude.h"

#include <array>
#include <cstddef>

namespace borvane {

float ScoreOfBox(int box, bool first_is_ticked) {
  constexpr std::array<float, 7> weights = {5, 6, 5, 4, 5, 0, 0};
  const float weight = weights[static_cast<std::size_t>(box)];

  // Meant (first-box-gives-the-sign): a tick should raise the score and its removal lower it. Whether the box of the
  // pictures is ticked decides for all boxes: while it is clear, each click lowers the score. The means of all reports
  // that have been filed are of this number.
  return first_is_ticked ? weight : -weight;
}

float ScoreOfStrength(int position) { return static_cast<float>(position + 1); }

float FeltMagnitude(Integer position, float score) {
  constexpr int lowest_floor = 3;
  constexpr double scale = 7;

  const Integer floor = position + lowest_floor;

  const float sum = static_cast<float>(floor) + score;

  return static_cast<float>(static_cast<double>(sum) / scale + 1);
}

}  // namespace borvane
