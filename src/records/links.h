#pragma once

#include <string>

namespace borvane {

/// Whether the chosen area is the one whose list has the columns of a region's table.
bool IsRegionFamily();

/// Puts the address of the page of the event that is selected in the list into `address`. Raises an object failure when
/// none is selected.
void OpenMapPage(std::string &address);

/// The address of the page of the list's first event; empty when its link has no slash. Raises a subscript failure when
/// the list is empty.
std::string GetLastEventUrl();

/// The address of a map around the event that is selected in the list. Where the event's own page has the coordinates,
/// it is fetched once. Raises an object failure when no event is selected, and an invalid argument where the page has
/// none.
std::string MapAddress();

/// The place in the headline of the world. Raises an invalid argument while there is no headline.
std::string HeadlinePlace();

/// The address of the encyclopedia's search for the headline's place, and that of a web search in the encyclopedia.
/// They fail as HeadlinePlace does.
std::string EncyclopediaAddress();
std::string WebSearchAddress();

/// The path of the help: beside the executable, or in the folder for shared data of an installed program.
std::string HelpPath();

}  // namespace borvane
