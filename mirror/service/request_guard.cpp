#include "service/request_guard.h"

#include <QHostAddress>

#include "common/hosts.h"

namespace borvane::mirror {

namespace {

/// The name or address in the value of a Host header, without brackets and port, in lower case.
QString NameIn(const QByteArray &host) {
  const QString text = QString::fromLatin1(host).toLower();
  return text.startsWith('[') ? text.sliced(1).section(']', 0, 0) : text.section(':', 0, 0);
}

}  // namespace

bool IsFromAnotherSite(const Request &request) {
  const QByteArray &site = request.fetch_site;
  return request.has_origin || !(site.isEmpty() || site == "none" || site == "same-origin");
}

bool IsKnownHost(const QByteArray &host, const QStringList &names) {
  const QString name = NameIn(host);
  return host.isEmpty() || name == "localhost" || name.endsWith(".localhost") || !QHostAddress(name).isNull() ||
         names.contains(name) || (EndpointOfMirrorHost(name.toStdString()) && names.contains(name.section('.', 1)));
}

}  // namespace borvane::mirror
