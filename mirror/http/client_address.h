#pragma once

#include <QHostAddress>

namespace borvane::mirror {

/// What counts as one client in a limit: an IPv4 address, or the network of an IPv6 address, which has more addresses
/// than anyone could count.
QHostAddress ClientOf(const QHostAddress &address);

}  // namespace borvane::mirror
