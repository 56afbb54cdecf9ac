#include "transfer/http_address.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "common/letters.h"

namespace borvane {

namespace {

constexpr std::uint16_t http_port = 80;
constexpr std::uint16_t https_port = 443;

bool IsLetterOrDigit(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); }

bool IsHostCharacter(char c) { return IsLetterOrDigit(c) || c == '-' || c == '.' || c == '_'; }

bool IsAddressCharacter(char c) { return IsLetterOrDigit(c) || c == ':' || c == '.'; }

/// Whether `text` begins with a scheme, such as "http:" or "mailto:".
bool HasScheme(std::string_view text) {
  const std::size_t colon = text.find(':');
  return colon != std::string_view::npos && colon < text.find_first_of("/?#");
}

/// Takes `scheme` and "://" off the front of `text`, in letters of either case.
bool TakeScheme(std::string_view &text, std::string_view scheme) {
  constexpr std::string_view separator = "://";
  if (text.size() < scheme.size() + separator.size() || text.substr(scheme.size(), separator.size()) != separator)
    return false;
  if (!EqualInAnyCase(text.substr(0, scheme.size()), scheme))
    return false;
  text.remove_prefix(scheme.size() + separator.size());
  return true;
}

/// Takes a host off the front of `text`; empty when there is none.
std::string_view TakeHost(std::string_view &text) {
  std::size_t length = 0;
  if (text.starts_with('[')) {
    const std::size_t close = text.find(']');
    if (close == std::string_view::npos || close == 1 ||
        !std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(close), IsAddressCharacter))
      return {};
    length = close + 1;
  } else {
    length = static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsHostCharacter) - text.begin());
  }
  const std::string_view host = text.substr(0, length);
  text.remove_prefix(length);
  return host;
}

/// The number of a port, such as ":8080"; the default for no port at all.
std::optional<std::uint16_t> PortOf(std::string_view text, std::uint16_t default_port) {
  if (text.empty())
    return default_port;
  std::uint16_t port = 0;
  const char *end = text.data() + text.size();
  if (!text.starts_with(':'))
    return {};
  const auto [rest, error] = std::from_chars(text.data() + 1, end, port);
  if (error != std::errc() || rest != end || port == 0)
    return {};
  return port;
}

std::string SafeTarget(std::string_view text) {
  std::string target;
  for (const char c : text) {
    if (c == '\r')
      target += "%0D";
    else if (c == '\n')
      target += "%0A";
    else if (c == '\0')
      target += "%00";
    else
      target += c;
  }
  return target;
}

/// `path` with its segments "." and ".." carried out.
std::string PlainPath(std::string_view path) {
  std::vector<std::string_view> segments;
  bool ends_in_folder = false;
  while (!path.empty()) {
    path.remove_prefix(1);
    const std::string_view segment = path.substr(0, path.find('/'));
    path.remove_prefix(segment.size());
    ends_in_folder = segment == "." || segment == "..";
    if (segment == ".." && !segments.empty())
      segments.pop_back();
    else if (!ends_in_folder)
      segments.push_back(segment);
  }
  std::string plain;
  for (const std::string_view segment : segments)
    plain.append("/").append(segment);
  if (ends_in_folder || plain.empty())
    plain += '/';
  return plain;
}

/// The path of a target, without its query.
std::string_view PathOf(std::string_view target) { return target.substr(0, target.find('?')); }

/// `location`, which has no host, as a target that is asked for at `base`.
std::string TargetFrom(std::string_view base, std::string_view location) {
  if (location.empty())
    return std::string(base);
  const std::string_view path = PathOf(base);
  if (location.starts_with('?'))
    return std::string(path).append(location);
  const std::string_view folder = location.starts_with('/') ? std::string_view() : path.substr(0, path.rfind('/') + 1);
  const std::string_view location_path = PathOf(location);
  return PlainPath(std::string(folder).append(location_path)).append(location.substr(location_path.size()));
}

}  // namespace

std::string HttpAddress::Root() const { return scheme + "://" + host + ":" + std::to_string(port) + "/"; }

std::optional<HttpAddress> ParseHttpAddress(std::string_view address) {
  HttpAddress parts;
  if (TakeScheme(address, "http"))
    parts.scheme = "http";
  else if (TakeScheme(address, "https"))
    parts.scheme = "https";
  else
    return {};

  parts.host = TakeHost(address);
  const std::size_t path = std::min(address.find('/'), address.size());
  const std::optional<std::uint16_t> port =
      PortOf(address.substr(0, path), parts.scheme == "http" ? http_port : https_port);
  if (parts.host.empty() || !port)
    return {};
  parts.port = *port;
  parts.target = path == address.size() ? "/" : SafeTarget(address.substr(path));
  return parts;
}

std::optional<HttpAddress> ResolveRedirect(const HttpAddress &base, std::string_view location) {
  location = location.substr(0, location.find('#'));
  if (HasScheme(location))
    return ParseHttpAddress(location);
  if (location.starts_with("//"))
    return ParseHttpAddress(base.scheme + ":" + std::string(location));
  HttpAddress resolved = base;
  resolved.target = SafeTarget(TargetFrom(base.target, location));
  return resolved;
}

}  // namespace borvane
