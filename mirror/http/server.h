#pragma once

#include <QHash>
#include <QHostAddress>
#include <QTimer>
#include <memory>
#include <optional>
#include <vector>

#include "http/connection.h"
#include "http/listener.h"

namespace borvane::mirror {

/// Answers the requests that come in at one or more addresses.
class Server : public QObject {
 public:
  /// The handler must outlive the server.
  Server(Limits limits, Handler &handler);
  ~Server() override;

  /// Listens at the address, too. `port` 0 takes a free one. Gives the port; nothing when it cannot listen, and then
  /// ListenError says why.
  std::optional<quint16> Listen(const QHostAddress &address, quint16 port);

  QAbstractSocket::SocketError ListenError() const { return listen_error_; }
  const QString &ListenErrorText() const { return listen_error_text_; }

  const Traffic &traffic() const { return traffic_; }

  /// How many connections there are at the moment.
  int Connections() const { return static_cast<int>(connections_.size()); }

 private:
  /// What a connection counts as.
  struct Place {
    QHostAddress client;
    bool is_refused = false;
  };

  void Take(qintptr descriptor);
  void Forget(Connection *connection);
  bool IsFullFor(const QHostAddress &client) const;
  void CheckTimes();
  void CutWhoTakesTooMuch();

  const Limits limits_;
  Handler &handler_;
  UnsentBodies bodies_;
  RepeatedBodies repeated_bodies_;
  Traffic traffic_;
  std::vector<std::unique_ptr<Listener>> listeners_;
  QHash<Connection *, Place> connections_;
  QHash<QHostAddress, int> served_;  ///< connections of each client, the refused ones aside
  int refused_ = 0;
  QTimer sweep_;
  QAbstractSocket::SocketError listen_error_ = QAbstractSocket::UnknownSocketError;
  QString listen_error_text_;
};

}  // namespace borvane::mirror
