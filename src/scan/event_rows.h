#pragma once

#include <cstdint>
#include <string_view>

#include "scan/event_fields.h"

namespace borvane {

/// The column sets of the list of events.
inline constexpr std::int32_t columns_of_region_table = 0;
inline constexpr std::int32_t columns_until_first_scan = 1;
inline constexpr std::int32_t columns_of_events = 2;

/// Empties the list of events and sets the columns of `family`; none for an unknown one.
void SetupColumns(const std::int32_t &family);

/// Writes the newest event into the row of the upper list and, when it has a latitude, tests it for the alert. The
/// first argument is ignored.
void AddEventRow(std::string_view ignored, EventFields &fields);

/// Appends the event's slots 1 to 8 to the list of events, passes the first one on to AddEventRow and each to
/// KeepBiggest.
void ListEvent(EventFields &fields);

}  // namespace borvane
