#include "feed/presence.h"

namespace borvane {

void SendOnlineMark() {}

std::string GetUsersOnline() { return {}; }

}  // namespace borvane
