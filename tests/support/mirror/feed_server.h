#pragma once

#include <QByteArrayList>
#include <QSslConfiguration>
#include <QString>
#include <QTcpServer>
#include <QTcpSocket>
#include <functional>
#include <memory>

#include "support/reserved_port.h"

namespace borvane::mirror {

/// A web server on a port of this computer that answers as the test has set.
class FeedServer {
 public:
  /// Answers the last request on its connection.
  using Answer = std::function<void(QTcpSocket &connection)>;

  /// One of plain http.
  explicit FeedServer(Answer answer);

  /// One of https, with a certificate for feeds.localhost or another name.
  FeedServer(Answer answer, const QSslConfiguration &certified);

  QString Url(const QString &target = "/feed") const;
  void SetAnswer(Answer answer) { answer_ = std::move(answer); }

  /// All requests so far, whole.
  const QByteArrayList &Requests() const { return requests_; }

  /// Takes no more connections: the port refuses them.
  void Close() { server_->close(); }

 private:
  void Listen();
  void Read(QTcpSocket &connection);

  ReservedPort port_;  ///< its own also after Close()
  std::unique_ptr<QTcpServer> server_;
  QString root_;
  Answer answer_;
  QByteArrayList requests_;
};

/// An answer of that status, with its length.
QByteArray HttpAnswer(const QByteArray &status, const QByteArray &body, const QByteArrayList &headers = {});

/// Writes these bytes and closes.
FeedServer::Answer Sends(const QByteArray &bytes);

/// Writes `bytes` and then `more` again and again, for as long as they are taken.
FeedServer::Answer SendsWithoutEnd(const QByteArray &bytes, const QByteArray &more);

/// Writes `bytes` and then `more` again and again, with a pause before each.
FeedServer::Answer SendsSlowly(const QByteArray &bytes, const QByteArray &more, int pause_ms);

/// `text` as the command gzip packs it.
QByteArray Gzip(const QByteArray &text);

}  // namespace borvane::mirror
