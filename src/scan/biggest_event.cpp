#include "scan/biggest_event.h"

namespace borvane {

void KeepBiggest(EventFields & /*fields*/) {}

}  // namespace borvane
