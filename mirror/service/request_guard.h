#pragma once

#include <QByteArray>
#include <QStringList>

#include "http/request_reader.h"

namespace borvane::mirror {

/// Whether a web page of another site, shown in the user's browser, may have sent the request. Such a page can reach
/// the loopback address. The monitor sends none of the header fields that give it away.
bool IsFromAnotherSite(const Request &request);

/// Whether the value of a Host header, with or without a port, is an address, "localhost", a name under "localhost" or
/// one of `names`, which are in lower case, perhaps with the label of an endpoint in front; also when it is empty. Any
/// other name may be one whose owner has pointed it at this computer, so that a browser takes the answers for that
/// owner's own.
bool IsKnownHost(const QByteArray &host, const QStringList &names);

}  // namespace borvane::mirror
