#pragma once

#include <array>
#include <string>
#include <string_view>

namespace borvane {

/// The kinds of endpoints that the program speaks to. Each is a host of its own.
enum class Endpoint {
  National,
  Southern,
  Northern,
  PacificNorthwest,
  Alaska,
  Utah,
  Memphis,
  Northeastern,
  PuertoRico,
  Maker,
};

/// An endpoint's name in the settings store and its host, with a port where it is not 80.
struct EndpointHost {
  Endpoint endpoint;
  std::string_view name;
  std::string_view default_host;
};

/// The hosts when the store names no others, in the order of Endpoint: all are the companion mirror on this computer,
/// which tells them apart by their names.
inline constexpr std::array endpoint_hosts = {
    EndpointHost{Endpoint::National, "National", "national.localhost:17650"},
    EndpointHost{Endpoint::Southern, "Southern", "southern.localhost:17650"},
    EndpointHost{Endpoint::Northern, "Northern", "northern.localhost:17650"},
    EndpointHost{Endpoint::PacificNorthwest, "PacificNorthwest", "pacificnorthwest.localhost:17650"},
    EndpointHost{Endpoint::Alaska, "Alaska", "alaska.localhost:17650"},
    EndpointHost{Endpoint::Utah, "Utah", "utah.localhost:17650"},
    EndpointHost{Endpoint::Memphis, "Memphis", "memphis.localhost:17650"},
    EndpointHost{Endpoint::Northeastern, "Northeastern", "northeastern.localhost:17650"},
    EndpointHost{Endpoint::PuertoRico, "PuertoRico", "puertorico.localhost:17650"},
    EndpointHost{Endpoint::Maker, "Maker", "maker.localhost:17650"},
};

/// The key whose values, named like the endpoints, put other hosts in place of the defaults.
inline constexpr std::string_view hosts_key = R"(Software\Nalvorin\Borvane\Hosts)";

/// The host of `endpoint`: the stored one, or else the default.
std::string HostOf(Endpoint endpoint);

/// The address of `path`, which begins with a slash, on the host of `endpoint`.
std::string AddressOf(Endpoint endpoint, std::string_view path);

}  // namespace borvane
