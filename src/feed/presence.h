#pragma once

#include <string>

namespace borvane {

/// Tells the maker's service that this client is running.
void SendOnlineMark();

/// The number of users online, as the maker's service tells it; empty when it tells nothing.
std::string GetUsersOnline();

}  // namespace borvane
