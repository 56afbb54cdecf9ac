#pragma once

#include <string>
#include <string_view>

#include "common/hosts.h"

namespace borvane {

/// The key whose values, named like the endpoints, replace the default hosts.
inline constexpr std::string_view hosts_key = R"(Software\Nalvorin\Borvane\Hosts)";

/// The host of `endpoint`: the stored one, or else the mirror on this computer.
std::string HostOf(Endpoint endpoint);

/// The address of `path`, which begins with a slash, on the host of `endpoint`.
std::string AddressOf(Endpoint endpoint, std::string_view path);

/// The scheme and host of an endpoint for the browser: the stored ones, or else those of the mirror on this computer or
/// of a public site. A stored host without a scheme gets http.
std::string SiteOf(BrowserEndpoint endpoint);

/// The address of `path`, which begins with a slash, on the site of `endpoint`.
std::string AddressOf(BrowserEndpoint endpoint, std::string_view path);

/// The address to which users write to the maker: the stored one, or else one under a name that nobody owns.
std::string MakerMail();

/// Whether any endpoint's pages come from the mirror on this computer.
bool UsesMirror();

}  // namespace borvane
