#include "alert/quake_log.h"

namespace borvane {

void InitLogPath() {}

void WriteQuakeLog() {}

}  // namespace borvane
