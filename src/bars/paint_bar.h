#pragma once

#include "controls/label.h"

namespace borvane {

/// The distance between the labels of a bar, in twips.
inline constexpr float label_gap = 100;

/// Moves `label` to the right of its neighbour, whose text is as it should be.
void PutAfter(Label &label, const Label &left_neighbour);

/// Colours the labels of the long bar and lays them out.
void PaintBar();

}  // namespace borvane
