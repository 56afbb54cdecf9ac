#pragma once

#include <QHostAddress>
#include <optional>
#include <string>

namespace borvane::mirror {

/// The version of the borvane-mirror that listens at the address; nothing when another program does, or none. Waits for
/// its answer, for two seconds at most.
std::optional<std::string> MirrorVersionAt(const QHostAddress &address, quint16 port);

}  // namespace borvane::mirror
