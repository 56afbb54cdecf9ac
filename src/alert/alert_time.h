#pragma once

#include <string>
#include <string_view>

#include "basic/date.h"

namespace borvane {

/// The moment that events are compared with, as text: the date `mm-dd-yyyy`, a blank, `hh:mm:`, and the seconds minus
/// one.
std::string FirstAlertTime(Date now);

/// The moment of an event by the texts of its date and its time. Raises a type mismatch when one of them, or what both
/// make together, is no date.
Date EventTime(std::string_view date, std::string_view time);

/// A date as text: without the time at midnight, without the day on the base day.
std::string DateText(Date date);

}  // namespace borvane
