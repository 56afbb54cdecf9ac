#pragma once

namespace borvane {

/// Colours the labels of the long bar and lays them out.
void PaintBar();

}  // namespace borvane
