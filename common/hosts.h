#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace borvane {

/// The kinds of endpoints that the monitor speaks to. Each is a host of its own, and the mirror plays them all.
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

/// An endpoint's name in the monitor's settings, and the label by which the mirror recognises it in a host's name.
struct EndpointHost {
  Endpoint endpoint;
  std::string_view name;
  std::string_view label;
};

/// All endpoints, in the order of Endpoint.
inline constexpr std::array endpoint_hosts = {
    EndpointHost{Endpoint::National, "National", "national"},
    EndpointHost{Endpoint::Southern, "Southern", "southern"},
    EndpointHost{Endpoint::Northern, "Northern", "northern"},
    EndpointHost{Endpoint::PacificNorthwest, "PacificNorthwest", "pacificnorthwest"},
    EndpointHost{Endpoint::Alaska, "Alaska", "alaska"},
    EndpointHost{Endpoint::Utah, "Utah", "utah"},
    EndpointHost{Endpoint::Memphis, "Memphis", "memphis"},
    EndpointHost{Endpoint::Northeastern, "Northeastern", "northeastern"},
    EndpointHost{Endpoint::PuertoRico, "PuertoRico", "puertorico"},
    EndpointHost{Endpoint::Maker, "Maker", "maker"},
};

/// The endpoints whose pages the monitor never reads: it opens them in the browser. The mirror plays those of
/// earthquakes, too.
enum class BrowserEndpoint {
  StrongMotion,
  WorldList,
  FeltForms,
  Maps,
  Encyclopedia,
  WebSearch,
};

/// The same as EndpointHost for such an endpoint. One that the mirror does not play has a public site instead of a
/// label, with its scheme.
struct BrowserHost {
  BrowserEndpoint endpoint;
  std::string_view name;
  std::string_view label;
  std::string_view public_site = "";
};

/// All of them, in the order of BrowserEndpoint.
inline constexpr std::array browser_hosts = {
    BrowserHost{BrowserEndpoint::StrongMotion, "StrongMotion", "strongmotion"},
    BrowserHost{BrowserEndpoint::WorldList, "WorldList", "worldlist"},
    BrowserHost{BrowserEndpoint::FeltForms, "FeltForms", "feltforms"},
    BrowserHost{BrowserEndpoint::Maps, "Maps", "", "https://maps.google.com"},
    BrowserHost{BrowserEndpoint::Encyclopedia, "Encyclopedia", "", "https://en.wikipedia.org"},
    BrowserHost{BrowserEndpoint::WebSearch, "WebSearch", "", "https://www.google.com"},
};

/// The port of the loopback address at which the mirror listens by default and the monitor expects it.
inline constexpr std::uint16_t mirror_port = 17650;

/// The host, with its port, under which a mirror on this computer plays the endpoint: "southern.localhost:17650".
std::string MirrorHost(Endpoint endpoint, std::uint16_t port = mirror_port);

/// The scheme and host, with its port, under which a mirror on this computer plays the endpoint for a browser:
/// "http://worldlist.localhost:17650". The endpoint must be one that it plays.
std::string MirrorSite(BrowserEndpoint endpoint, std::uint16_t port = mirror_port);

/// The scheme and host of the endpoint's public site, or else of the mirror on this computer.
std::string DefaultSite(BrowserEndpoint endpoint);

/// The endpoint that a mirror plays under this host, which may have a port and be in any case: the one that its first
/// label names, as in "southern.localhost" and in "southern.quakes.example:80". Nothing for all others.
std::optional<Endpoint> EndpointOfMirrorHost(std::string_view host);

}  // namespace borvane
