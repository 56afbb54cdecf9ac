#pragma once

#include <string>

#include "basic/date.h"

namespace borvane {

/// The clock's time as `hh:mm:ss` in 24 hours.
std::string TimeText(Date date);

/// The moment from which events count as new, as text: the date `mm-dd-yyyy`, a blank, `hh:mm:`, and the seconds minus
/// one.
std::string FirstAlertTime(Date now);

}  // namespace borvane
