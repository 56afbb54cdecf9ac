#include "http/listener.h"

#include "http/socket.h"

namespace borvane::mirror {

namespace {

/// Waiting connections that the system keeps for us, for many clients that come at once.
constexpr int backlog = 1024;

/// How long no connection is accepted after the system had no room for one more, unless one ends before.
constexpr int pause_ms = 500;

}  // namespace

Listener::Listener(std::function<void(qintptr descriptor)> on_connection) : on_connection_(std::move(on_connection)) {
  pause_.setSingleShot(true);
  pause_.setInterval(pause_ms);
  QObject::connect(&pause_, &QTimer::timeout, &server_, [this] { Resume(); });
}

bool Listener::Listen(const QHostAddress &address, quint16 port) {
  server_.setListenBacklogSize(backlog);
  if (!server_.listen(address, port))
    return false;
  server_.pauseAccepting();
  waiting_ = std::make_unique<QSocketNotifier>(server_.socketDescriptor(), QSocketNotifier::Read);
  QObject::connect(waiting_.get(), &QSocketNotifier::activated, &server_, [this] { AcceptAll(); });
  return true;
}

void Listener::Resume() {
  pause_.stop();
  waiting_->setEnabled(true);
}

void Listener::AcceptAll() {
  bool is_exhausted = false;
  for (qintptr descriptor = Accept(server_.socketDescriptor(), is_exhausted); descriptor >= 0;
       descriptor = Accept(server_.socketDescriptor(), is_exhausted))
    on_connection_(descriptor);
  if (is_exhausted) {
    waiting_->setEnabled(false);
    pause_.start();
  }
}

}  // namespace borvane::mirror
