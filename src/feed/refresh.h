#pragma once

#include "basic/integer.h"

namespace borvane {

/// The mode of every refresh that the program makes: it shows the hourglass and stops the timer meanwhile.
inline constexpr int refresh_with_hourglass = 3;

/// A mode without a caller: the refresh empties the short bar's first label instead.
inline constexpr int refresh_from_short_bar = 1;

/// Reports presence, fetches the page of the chosen area, scans it into the lists, and updates the status bar and the
/// title. A failure leaves all as it was, silently, with a retry within ten ticks. Raises an overflow when it fails
/// while the threshold of the cycle does not fit 16 bits.
void RefreshEvents(Integer &mode);

/// Fetches the world page and puts its first event into the headline, Label3 of frmRecords, whatever area is watched. A
/// failure is silent and leaves the hourglass, and `GlobalScanFlag` when it came from the scan.
void RefreshWorld();

}  // namespace borvane
