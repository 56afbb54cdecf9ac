#pragma once

#include <QHostAddress>
#include <QSet>
#include <QTcpServer>
#include <QTimer>
#include <memory>
#include <vector>

#include "http/connection.h"

namespace borvane::mirror {

/// Answers the requests that come in at one or more addresses.
class Server : public QObject {
 public:
  Server(Limits limits, Handler handler);
  ~Server() override;

  /// Listens at the address, too. `port` 0 takes a free one. Gives the port; nothing when it cannot listen, and then
  /// ListenError says why.
  std::optional<quint16> Listen(const QHostAddress &address, quint16 port);

  QAbstractSocket::SocketError ListenError() const { return listen_error_; }
  const QString &ListenErrorText() const { return listen_error_text_; }

 private:
  class Listener;

  void Take(qintptr descriptor);
  void Forget(Connection *connection);
  void CheckTimes();

  const Limits limits_;
  const Handler handler_;
  std::vector<std::unique_ptr<Listener>> listeners_;
  QSet<Connection *> connections_;
  QTimer sweep_;
  QAbstractSocket::SocketError listen_error_ = QAbstractSocket::UnknownSocketError;
  QString listen_error_text_;
};

}  // namespace borvane::mirror
