#include "pages/page_host.h"

#include <QHostAddress>
#include <algorithm>

#include "common/letters.h"
#include "http/plain_host.h"

namespace borvane::mirror {

namespace {

/// Whether it is the label of a host that the mirror plays.
bool IsLabelOfMirror(std::string_view label) {
  const auto has_label = [label](const auto &row) { return EqualInAnyCase(label, row.label); };
  return !label.empty() && (std::any_of(endpoint_hosts.begin(), endpoint_hosts.end(), has_label) ||
                            std::any_of(browser_hosts.begin(), browser_hosts.end(), has_label));
}

/// What follows a label in the names beside `name`, which may begin with one itself: ".quakes.school.example". Nothing
/// for the address of a computer; this one's own has the names under "localhost".
std::optional<QByteArray> DomainOf(const QByteArray &name) {
  const bool has_brackets = name.startsWith('[');
  const QHostAddress address(QString::fromLatin1(has_brackets ? name.sliced(1).chopped(1) : name));
  if (address.isLoopback())
    return ".localhost";
  if (!address.isNull() || has_brackets)
    return std::nullopt;
  const qsizetype dot = name.indexOf('.');
  const QByteArray label = dot < 0 ? name : name.first(dot);
  if (!IsLabelOfMirror(std::string_view(label.constData(), static_cast<std::size_t>(label.size()))))
    return QByteArray('.' + name);
  return dot < 0 ? QByteArray() : name.sliced(dot);
}

}  // namespace

PageHost::PageHost(const QByteArray &host, quint16 port) : endpoint_(EndpointOfMirrorHost(host.toStdString())) {
  const QByteArray place = IsPlainHost(host) ? host.toLower() : QByteArray("localhost:" + QByteArray::number(port));
  const qsizetype colon = place.indexOf(':', place.indexOf(']') + 1);
  const qsizetype end = colon < 0 ? place.size() : colon;
  domain_ = DomainOf(place.first(end));
  if (domain_)
    *domain_ += place.sliced(end);
}

QByteArray PageHost::LinkTo(const Area &area, std::span<const Area> areas) const {
  if (FindArea(area.path, endpoint_, areas) == &area)
    return area.path;
  if (!domain_)
    return {};
  const std::string_view label = endpoint_hosts[static_cast<std::size_t>(area.endpoint)].label;
  return "http://" + QByteArray(label.data(), static_cast<qsizetype>(label.size())) + *domain_ + area.path;
}

QByteArray PageHost::Key() const {
  const QByteArray endpoint = endpoint_ ? QByteArray::number(static_cast<int>(*endpoint_)) : QByteArray();
  return endpoint + '\n' + domain_.value_or(QByteArray());
}

}  // namespace borvane::mirror
