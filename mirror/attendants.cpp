#include "attendants.h"

#include <QLocalSocket>

namespace borvane::mirror {

namespace {

constexpr int wait_for_first_ms = 10'000;
constexpr int wait_after_last_ms = 2'000;
constexpr int wait_for_answer_ms = 500;

/// Whether somebody listens at the local socket. The file of one that was killed stays behind, and nobody listens
/// there.
bool IsAlive(const QString &socket_name) {
  QLocalSocket socket;
  socket.connectToServer(socket_name);
  return socket.waitForConnected(wait_for_answer_ms);
}

}  // namespace

Attendants::Attendants(std::function<void()> end) {
  patience_.setSingleShot(true);
  QObject::connect(&patience_, &QTimer::timeout, std::move(end));
  QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] { Welcome(); });
}

QString Attendants::Start(const QString &socket_name) {
  if (IsAlive(socket_name))
    return "another mirror counts the monitors at " + socket_name;
  QLocalServer::removeServer(socket_name);
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  if (!server_.listen(socket_name))
    return QString("cannot open the local socket %1: %2").arg(socket_name, server_.errorString());
  patience_.start(wait_for_first_ms);
  return {};
}

void Attendants::Welcome() {
  while (QLocalSocket *monitor = server_.nextPendingConnection()) {
    ++present_;
    patience_.stop();
    QObject::connect(monitor, &QLocalSocket::readyRead, monitor, [monitor] { monitor->readAll(); });
    QObject::connect(monitor, &QLocalSocket::disconnected, &server_, [this, monitor] {
      monitor->deleteLater();
      Leave();
    });
  }
}

void Attendants::Leave() {
  if (--present_ == 0)
    patience_.start(wait_after_last_ms);
}

}  // namespace borvane::mirror
