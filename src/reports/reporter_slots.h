#pragma once

#include <string>
#include <string_view>

#include "basic/integer.h"

namespace borvane {

// The settings keep those who have reported from this computer in numbered slots: User1 and so on. The name itself is
// never sent.

/// The slot of a reporter.
struct Reporter {
  Integer slot;
  bool is_known = false;  // whether the slot's stored text is the reporter's name
};

/// The slot whose text is `name`, or else the one after the highest that is in use. An empty name is that of the first
/// unused slot.
Reporter FindReporter(std::string_view name);

/// Whether the store has today as the day of that slot's last report.
bool HasReportedToday(Integer slot);

/// Keeps the reporter of a report that has been sent.
void SaveReporter(Integer slot, std::string_view name);

}  // namespace borvane
