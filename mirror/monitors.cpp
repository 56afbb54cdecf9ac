#include "monitors.h"

#include <QLocalSocket>

namespace borvane::mirror {

namespace {

constexpr int timeout_of_the_first_ms = 10'000;
constexpr int timeout_after_the_last_ms = 2'000;
constexpr int timeout_of_another_mirror_ms = 500;

/// Whether a program listens at the local socket. A mirror that was killed leaves its file, where nobody listens.
bool IsInUse(const QString &socket_path) {
  QLocalSocket socket;
  socket.connectToServer(socket_path);
  return socket.waitForConnected(timeout_of_another_mirror_ms);
}

}  // namespace

Monitors::Monitors(std::function<void()> end) {
  timeout_.setSingleShot(true);
  QObject::connect(&timeout_, &QTimer::timeout, std::move(end));
  QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] { OnConnected(); });
}

QString Monitors::Start(const QString &socket_path) {
  if (IsInUse(socket_path))
    return "another program listens at " + socket_path;
  QLocalServer::removeServer(socket_path);
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  if (!server_.listen(socket_path))
    return QString("cannot open the local socket %1: %2").arg(socket_path, server_.errorString());
  timeout_.start(timeout_of_the_first_ms);
  return {};
}

void Monitors::OnConnected() {
  while (QLocalSocket *monitor = server_.nextPendingConnection()) {
    ++connected_;
    timeout_.stop();
    QObject::connect(monitor, &QLocalSocket::readyRead, monitor, [monitor] { monitor->readAll(); });
    QObject::connect(monitor, &QLocalSocket::disconnected, &server_, [this, monitor] {
      monitor->deleteLater();
      OnDisconnected();
    });
  }
}

void Monitors::OnDisconnected() {
  if (--connected_ == 0)
    timeout_.start(timeout_after_the_last_ms);
}

}  // namespace borvane::mirror
