#pragma once

class QWindow;

namespace borvane {

/// Takes `window`, which has just been shown, out of the task bar and the pager. To be called after each show, since a
/// window manager forgets this when the window is hidden. Systems other than X11 do as they like.
void LeaveOutOfTaskBar(const QWindow &window);

}  // namespace borvane
