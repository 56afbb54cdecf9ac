#pragma once

#include <QHostAddress>
#include <QString>
#include <optional>

namespace borvane::mirror {

/// A mirror that listens somewhere.
struct OtherMirror {
  QString version;
  bool has_our_pages = true;  ///< whether a monitor of this version reads its pages
};

/// The borvane-mirror that listens at the address; nothing when another program does, or none. Waits for its answer,
/// for two seconds at most.
std::optional<OtherMirror> MirrorAt(const QHostAddress &address, quint16 port);

}  // namespace borvane::mirror
