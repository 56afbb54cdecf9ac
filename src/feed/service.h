#pragma once

#include <string>
#include <string_view>

namespace borvane {

/// The program's major, minor and revision numbers joined: "235" for version 2.3.5.
std::string VersionDigits();

/// The address of a command to the maker's service. `query` is sent as it is; nothing in it is escaped.
std::string ServiceAddress(std::string_view query);

}  // namespace borvane
