#include "common/attendance.h"

namespace borvane {

std::string AttendanceSocket(std::string_view folder, std::uint16_t port) {
  return std::string(folder) + "/borvane-mirror-" + std::to_string(port);
}

}  // namespace borvane
