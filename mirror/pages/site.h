#pragma once

#include <QHash>
#include <memory>
#include <optional>

#include "catalogue/catalogue.h"
#include "pages/areas.h"

namespace borvane::mirror {

/// All pages, made from one catalogue. A page is made when it is first asked for and kept until the catalogue changes.
class Site {
 public:
  /// `source` says where the events come from, for the page of all pages.
  void SetCatalogue(std::shared_ptr<const Catalogue> catalogue, const QString &source);

  /// The port that the links to other hosts' pages carry.
  void SetPort(quint16 port) { port_ = port; }

  /// The page at a request's target, path and perhaps a query, on the host that the request names; nothing when there
  /// is none.
  std::optional<QByteArray> Page(const QByteArray &target, const QByteArray &host);

 private:
  std::optional<QByteArray> MakePage(const QByteArray &path, std::optional<HostKind> host) const;

  std::shared_ptr<const Catalogue> catalogue_ = std::make_shared<Catalogue>();
  QString source_;
  quint16 port_ = 0;
  QHash<QByteArray, QByteArray> kept_;
  qsizetype kept_bytes_ = 0;
};

}  // namespace borvane::mirror
