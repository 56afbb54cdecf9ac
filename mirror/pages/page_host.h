#pragma once

#include <QByteArray>
#include <optional>
#include <span>

#include "pages/areas.h"

namespace borvane::mirror {

/// The host that a page is on, by which its links lead to pages on the mirror's other hosts: those have their label in
/// front of the same domain, "memphis.quakes.school.example:8080" beside "quakes.school.example:8080".
class PageHost {
 public:
  /// `host` is the one that the request names. Without one that can be a part of an address, the page is on "localhost"
  /// at `port`, at which the mirror listens.
  PageHost(const QByteArray &host, quint16 port);

  /// What a link to the area's page names: the path where this host serves it, too, and otherwise the address on the
  /// area's own host. Empty where that has no address: beside the address of a computer there are no names.
  QByteArray LinkTo(const Area &area, std::span<const Area> areas) const;

  /// What the links depend on, in a few bytes: it has no line feed.
  QByteArray Key() const;

 private:
  std::optional<Endpoint> endpoint_;
  std::optional<QByteArray> domain_;  ///< what follows a label, ".quakes.school.example:8080"; nothing for an address
};

}  // namespace borvane::mirror
