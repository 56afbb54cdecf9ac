#pragma once

#include "scan/event_fields.h"

namespace borvane {

/// Keeps the event if it is the strongest one ever read.
void KeepBiggest(EventFields &fields);

}  // namespace borvane
