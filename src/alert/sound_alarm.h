#pragma once

namespace borvane {

/// Sounds the alarm and returns when it is over: as many rising sweeps as `conffrm.Text5(1)` says, each of 91 tones
/// from 100 to 1000 Hz, of as many milliseconds as `conffrm.Text5(0)` says. Events run between the tones. Raises an
/// overflow when one of the boxes has a number outside 16 bits.
void SoundAlarm();

}  // namespace borvane
