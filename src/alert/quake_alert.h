#pragma once

#include "scan/event_fields.h"

namespace borvane {

/// Raises the alert if the event calls for it.
void CheckEventAlert(EventFields &fields);

}  // namespace borvane
