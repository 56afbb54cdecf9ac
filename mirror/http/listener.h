#pragma once

#include <QSocketNotifier>
#include <QTcpServer>
#include <QTimer>
#include <functional>
#include <memory>

namespace borvane::mirror {

/// Accepts the connections at one address. QTcpServer tries again at once, for ever, when the process has no file
/// descriptor left for a waiting connection; this one pauses.
class Listener {
 public:
  /// `on_connection` takes over each connection's descriptor, which does not block.
  explicit Listener(std::function<void(qintptr descriptor)> on_connection);

  /// Listens at the address; `port` 0 takes a free one. False when that is not possible, and server() has the reason.
  bool Listen(const QHostAddress &address, quint16 port);

  /// Ends a pause: a file descriptor has become free.
  void Resume();

  /// The port and the last error.
  const QTcpServer &server() const { return server_; }

 private:
  void AcceptAll();

  const std::function<void(qintptr descriptor)> on_connection_;
  QTcpServer server_;
  QTimer pause_;
  std::unique_ptr<QSocketNotifier> waiting_;
};

}  // namespace borvane::mirror
