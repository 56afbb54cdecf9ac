#pragma once

namespace borvane {

/// Shows the newest event on the short bar, in the bar's colours.
void UpdateShortBar();

/// Shows the newest event and the strongest one on the long bar, in the bar's colours. A failure ends the update: what
/// has been written stays, and nothing is painted.
void UpdateLongBar();

}  // namespace borvane
