#include "common/hosts.h"

#include "common/letters.h"

namespace borvane {

namespace {

constexpr std::string_view loopback_domain = ".localhost";

std::string HostOfLabel(std::string_view label, std::uint16_t port) {
  return std::string(label).append(loopback_domain) + ':' + std::to_string(port);
}

}  // namespace

std::string MirrorHost(Endpoint endpoint, std::uint16_t port) {
  return HostOfLabel(endpoint_hosts[static_cast<std::size_t>(endpoint)].label, port);
}

std::string MirrorSite(BrowserEndpoint endpoint, std::uint16_t port) {
  return "http://" + HostOfLabel(browser_hosts[static_cast<std::size_t>(endpoint)].label, port);
}

std::string DefaultSite(BrowserEndpoint endpoint) {
  const BrowserHost &row = browser_hosts[static_cast<std::size_t>(endpoint)];
  return row.public_site.empty() ? MirrorSite(endpoint) : std::string(row.public_site);
}

std::optional<Endpoint> EndpointOfMirrorHost(std::string_view host) {
  const std::string_view name = host.substr(0, host.find(':'));
  const std::string_view label = name.substr(0, name.find('.'));
  for (const EndpointHost &row : endpoint_hosts)
    if (EqualInAnyCase(label, row.label))
      return row.endpoint;
  return {};
}

}  // namespace borvane
