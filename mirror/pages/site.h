#pragma once

#include <QHash>
#include <memory>
#include <optional>

#include "catalogue/catalogue.h"
#include "http/handler.h"
#include "pages/page_facts.h"
#include "pages/page_host.h"

namespace borvane::mirror {

/// All pages, written from one catalogue. A page is written when it is first asked for and kept until the catalogue
/// changes. What no other handler serves is this one's, too, and does not exist.
class Site : public Handler {
 public:
  /// The events, and what the pages say of them.
  void SetCatalogue(std::shared_ptr<const Catalogue> catalogue, PageFacts facts);

  /// The port that the links to other hosts' pages carry where the request names no host.
  void SetPort(quint16 port) { port_ = port; }

  /// The page at a request's target, path and perhaps a query, on the host that the request names; nothing when there
  /// is none.
  std::optional<QByteArray> Page(const QByteArray &target, const QByteArray &host);

  bool Serves(const QByteArray &target, const QByteArray &host) const override;
  void Handle(const Request &request, const QHostAddress &client, const Reply &reply) override;

  /// Without a body at a list page's path: the monitor would take any body for a page without rows and empty its list,
  /// and keeps its rows and tries again after an empty answer. With a body everywhere else, above all at an event
  /// page's path, where an empty answer ends the monitor.
  Answer Refusal(int status, const QByteArray &target, const QByteArray &host) const override;

 private:
  template <class Write>
  std::optional<QByteArray> KeptPage(const QByteArray &key, const Write &write);
  std::optional<QByteArray> WritePage(const QByteArray &path, const PageHost &host) const;

  std::shared_ptr<const Catalogue> catalogue_ = std::make_shared<Catalogue>();
  PageFacts facts_;
  quint16 port_ = 0;
  QHash<QByteArray, QByteArray> kept_;
  qsizetype kept_bytes_ = 0;
};

}  // namespace borvane::mirror
