#pragma once

#include <string_view>

namespace borvane {

/// The program's title, as its windows and questions show it.
inline constexpr std::string_view program_title = "Borvane";

struct ProgramVersion {
  int major;
  int minor;
  int revision;
};

/// The program's version. The build provides the numbers: they are in the project's CMakeLists.txt and nowhere else.
inline constexpr ProgramVersion program_version = {BORVANE_VERSION_MAJOR, BORVANE_VERSION_MINOR,
                                                   BORVANE_VERSION_REVISION};

}  // namespace borvane
