#pragma once

#include <QPalette>

namespace borvane {

/// Gives the application the font for which the windows' sizes are made and, where the desktop has no style of its own,
/// the program's.
void SetAppearance();

/// Shows the windows dark, as the user prefers, or in the desktop's own colours again. Own colours that are dark
/// already stay as they are.
void PreferDark(bool is_preferred);

/// The colours of the windows where dark is preferred and the desktop's own are light.
QPalette DarkPalette();

}  // namespace borvane
