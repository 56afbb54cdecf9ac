#pragma once

#include <string_view>

namespace borvane {

/// The program's title, as its windows and questions show it.
inline constexpr std::string_view program_title = "Borvane";

}  // namespace borvane
