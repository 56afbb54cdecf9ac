#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace borvane {

/// An address of the web in the parts that a request needs.
struct HttpAddress {
  std::string scheme;  // "http" or "https"
  std::string host;    // a name, an IPv4 address, or an IPv6 address in brackets
  std::uint16_t port = 0;
  std::string target;  // path and query as they go out: every byte as it was given, but for line ends and zeros

  /// Scheme, host and port, with a slash and nothing after it.
  std::string Root() const;

  bool operator==(const HttpAddress &) const = default;
};

/// Takes "http://host:port/target" apart. The target is all from the first slash after the host on, blanks, "#" and
/// bytes above 127 included; without one it is "/". Carriage return, line feed and zero, which would end or add a
/// header line, become "%0D", "%0A" and "%00". Nothing for any other form of address.
std::optional<HttpAddress> ParseHttpAddress(std::string_view address);

/// Where `location`, the header of a redirect, leads from the page at `base`: an address, or a path from the host's
/// root or from the page's folder. A part from "#" on is left out. Nothing when it leads to anything but http and
/// https.
std::optional<HttpAddress> ResolveRedirect(const HttpAddress &base, std::string_view location);

}  // namespace borvane
