#pragma once

#include <string>

#include "basic/date.h"

namespace borvane {

/// The clock's time as `hh:mm:ss` in 24 hours.
std::string TimeText(Date date);

}  // namespace borvane
