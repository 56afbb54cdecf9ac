#pragma once

namespace borvane {

/// Finds the folder of quakes.log.
void InitLogPath();

/// Appends the rows of the list that are new to quakes.log.
void WriteQuakeLog();

}  // namespace borvane
