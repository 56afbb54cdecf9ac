#pragma once

namespace borvane {

/// Starts the program: loads the settings, shows the records window and, in the first runs, the banner, and returns.
/// All else happens in handlers.
void Main();

/// Empties the lists, unloads the windows and ends the process at once. Does not return.
void QuitProgram();

}  // namespace borvane
