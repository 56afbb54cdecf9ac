#pragma once

#include <string>

namespace borvane {

/// Reports to the maker's service that this client is running.
void SendOnlineMark();

/// The number of users online, as the maker's service reports it; empty when it reports nothing.
std::string GetUsersOnline();

}  // namespace borvane
