#include "feed/hosts.h"

#include <algorithm>

#include "core/registry.h"

namespace borvane {

std::string HostOf(Endpoint endpoint) {
  const EndpointHost &row = endpoint_hosts[static_cast<std::size_t>(endpoint)];
  std::string stored = ReadRegValue(HKEY_CURRENT_USER, hosts_key, row.name);
  return stored.empty() ? MirrorHost(endpoint) : stored;
}

std::string AddressOf(Endpoint endpoint, std::string_view path) {
  return "http://" + HostOf(endpoint) + std::string(path);
}

std::string SiteOf(BrowserEndpoint endpoint) {
  const BrowserHost &row = browser_hosts[static_cast<std::size_t>(endpoint)];
  const std::string stored = ReadRegValue(HKEY_CURRENT_USER, hosts_key, row.name);
  if (stored.empty())
    return DefaultSite(endpoint);
  return stored.find("://") == std::string::npos ? "http://" + stored : stored;
}

std::string AddressOf(BrowserEndpoint endpoint, std::string_view path) { return SiteOf(endpoint) + std::string(path); }

std::string MakerMail() {
  std::string stored = ReadRegValue(HKEY_CURRENT_USER, hosts_key, "MakerMail");
  return stored.empty() ? "borvane@nalvorin.example" : stored;
}

bool UsesMirror() {
  return std::any_of(endpoint_hosts.begin(), endpoint_hosts.end(),
                     [](const EndpointHost &row) { return HostOf(row.endpoint) == MirrorHost(row.endpoint); });
}

}  // namespace borvane
