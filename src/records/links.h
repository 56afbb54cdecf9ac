#pragma once

#include <string>

namespace borvane {

/// Puts the address of the page of the event that is selected in the list into `address`. Raises an object failure when
/// none is selected.
void OpenMapPage(std::string &address);

/// The address of the page of the list's first event; empty when its link has no slash. Raises a subscript failure when
/// the list is empty.
std::string GetLastEventUrl();

}  // namespace borvane
