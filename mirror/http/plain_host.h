#pragma once

#include <QByteArray>

namespace borvane::mirror {

/// Whether the value of a Host header is a name or an address, perhaps with a port, made of the characters that these
/// have and no longer than they are: safe within an address on a page. A client may send anything.
bool IsPlainHost(const QByteArray &host);

}  // namespace borvane::mirror
