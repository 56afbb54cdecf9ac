#include "feed/hosts.h"

#include "core/registry.h"

namespace borvane {

std::string HostOf(Endpoint endpoint) {
  const EndpointHost &row = endpoint_hosts[static_cast<std::size_t>(endpoint)];
  std::string stored = ReadRegValue(HKEY_CURRENT_USER, hosts_key, row.name);
  return stored.empty() ? std::string(row.default_host) : stored;
}

std::string AddressOf(Endpoint endpoint, std::string_view path) {
  return "http://" + HostOf(endpoint) + std::string(path);
}

}  // namespace borvane
