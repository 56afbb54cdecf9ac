#include "alert/quake_alert.h"

namespace borvane {

void CheckEventAlert(EventFields & /*fields*/) {}

}  // namespace borvane
