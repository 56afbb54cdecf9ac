#pragma once

#include "scan/event_fields.h"

namespace borvane {

/// Raises the alert when the event's magnitude has reached `AlertThreshold` and the event is more than a second older
/// than `LastAlertTime`: shows the popup with the magnitude and shakes it. A failure inside ends it silently.
void CheckEventAlert(EventFields &fields);

/// Lets the popup wander from where it is, by 0 to 599 small steps of about 10 ms each. Events run during each step.
void ShakeQuakeAlert();

}  // namespace borvane
