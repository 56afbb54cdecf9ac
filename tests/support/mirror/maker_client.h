#pragma once

#include "support/mirror/client.h"

namespace borvane::mirror {

/// The answer to a GET from the maker's host.
inline std::optional<Response> GetFromMaker(quint16 port, const QByteArray &target) {
  return Get(port, target, "maker.localhost");
}

/// The same for a command of the service, with what follows its name.
inline std::optional<Response> AskMaker(quint16 port, const QByteArray &command) {
  return GetFromMaker(port, "/cgi-bin/borvane/control.pl?cmd=" + command);
}

}  // namespace borvane::mirror
