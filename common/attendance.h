#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace borvane {

/// The path, as bytes, of the local socket at which a mirror that listens at `port` counts the monitors that use it.
/// `folder` is the one that was given to the mirror with --attended. A monitor holds a connection to the socket for as
/// long as it runs and sends nothing; the connection ends with the monitor, however that ends. The mirror ends two
/// seconds after the last one has gone, and ten seconds after its start when none came.
std::string AttendanceSocket(std::string_view folder, std::uint16_t port);

}  // namespace borvane
