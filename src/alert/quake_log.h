#pragma once

#include <cstdint>
#include <string>

namespace borvane {

/// The path of the folder with that number of the shell; empty when there is none.
std::string GetSpecialFolderPath(std::int32_t &folder);

/// Sets `LogFolder` and makes that folder when there is none. Raises a file access error when it cannot be made, such
/// as where the documents folder is missing.
void EnsureLogFolder();

/// Sets `LogFolder`, and enables the label "Logs" when quakes.log is there.
void InitLogPath();

/// The path of quakes.log in `LogFolder`.
std::string LogPath();

/// Appends each row of the list to quakes.log that is not in it yet. What cannot be written is left for the next time.
void WriteQuakeLog();

}  // namespace borvane
