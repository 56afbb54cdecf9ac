#pragma once

#include "scan/event_fields.h"

namespace borvane {

/// Stores the event, which a list has on a row, if its magnitude is above that of the strongest one ever stored.
void KeepBiggest(EventFields &fields);

}  // namespace borvane
