#include "http/server.h"

namespace borvane::mirror {

namespace {

constexpr int sweep_interval_ms = 250;

/// Waiting connections that the system keeps for us, for many clients that come at once.
constexpr int backlog = 1024;

/// How long the server stops taking connections after the system had no room for one more.
constexpr int pause_ms = 500;

}  // namespace

class Server::Listener : public QTcpServer {
 public:
  explicit Listener(Server &server) : server_(server) {
    setListenBacklogSize(backlog);
    connect(this, &QTcpServer::acceptError, this,
            [this] { QTimer::singleShot(pause_ms, this, [this] { resumeAccepting(); }); });
  }

 protected:
  void incomingConnection(qintptr descriptor) override { server_.Take(descriptor); }

 private:
  Server &server_;
};

Server::Server(Limits limits, Handler handler) : limits_(limits), handler_(std::move(handler)) {
  connect(&sweep_, &QTimer::timeout, this, [this] { CheckTimes(); });
}

Server::~Server() = default;

std::optional<quint16> Server::Listen(const QHostAddress &address, quint16 port) {
  auto listener = std::make_unique<Listener>(*this);
  if (!listener->listen(address, port)) {
    listen_error_ = listener->serverError();
    listen_error_text_ = listener->errorString();
    return std::nullopt;
  }
  listeners_.push_back(std::move(listener));
  return listeners_.back()->serverPort();
}

void Server::Take(qintptr descriptor) {
  auto *connection = new Connection(descriptor, limits_, handler_, this);
  connections_.insert(connection);
  connect(connection, &QObject::destroyed, this, [this, connection] { Forget(connection); });
  if (connections_.size() > limits_.connections + limits_.refusals)
    delete connection;
  else if (connections_.size() > limits_.connections)
    connection->Refuse(503);
  if (!sweep_.isActive())
    sweep_.start(sweep_interval_ms);
}

void Server::Forget(Connection *connection) {
  connections_.remove(connection);
  if (connections_.isEmpty())
    sweep_.stop();
}

void Server::CheckTimes() {
  for (Connection *connection : QList<Connection *>(connections_.begin(), connections_.end()))
    connection->CheckTime();
}

}  // namespace borvane::mirror
