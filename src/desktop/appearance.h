#pragma once

namespace borvane {

/// Gives the application the font for which the windows' sizes are made.
void SetAppearance();

}  // namespace borvane
