#pragma once

#include <QHostAddress>

namespace borvane::mirror {

/// Whether the program that listens at the address is a borvane-mirror, too: its answer to `GET /` says so in the
/// header Server. Waits for the answer, for two seconds at most.
bool IsMirror(const QHostAddress &address, quint16 port);

}  // namespace borvane::mirror
