#pragma once

namespace borvane {

/// Shows the sample windows on the user's screen and does what the function keys say, until it is terminated. A line on
/// standard output says each time what has been done.
///   F1  the notice comes up above other programs      F4  the bar hides
///   F2  the notice shows                              F5  the bar goes above other programs
///   F3  the bar shows                                 F6  the bar does so no longer
///   F7  the notice goes no longer above others        F8  the bar goes off the screen, one pixel high
///   F9  the bar's menu opens                          F11 the sample window shows
int ShowWindows();

}  // namespace borvane
