#pragma once

namespace borvane {

/// Shows the newest event on the short bar, in the bar's colours.
void UpdateShortBar();

}  // namespace borvane
