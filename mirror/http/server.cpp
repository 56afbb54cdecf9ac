#include "http/server.h"

#include <algorithm>

#include "http/client_address.h"

namespace borvane::mirror {

namespace {

constexpr int sweep_interval_ms = 250;

}  // namespace

Server::Server(Limits limits, Handler &handler) : limits_(limits), handler_(handler) {
  connect(&sweep_, &QTimer::timeout, this, [this] {
    CheckTimes();
    CutWhoTakesTooMuch();
  });
}

Server::~Server() {
  // They count themselves out of what is destroyed before a QObject's children.
  for (Connection *connection : connections_.keys())
    delete connection;
}

std::optional<quint16> Server::Listen(const QHostAddress &address, quint16 port) {
  auto listener = std::make_unique<Listener>([this](qintptr descriptor) { Take(descriptor); });
  if (!listener->Listen(address, port)) {
    listen_error_ = listener->server().serverError();
    listen_error_text_ = listener->server().errorString();
    return std::nullopt;
  }
  listeners_.push_back(std::move(listener));
  return listeners_.back()->server().serverPort();
}

void Server::Take(qintptr descriptor) {
  const QHostAddress address = PeerAddress(descriptor);
  const QHostAddress client = ClientOf(address);
  const bool is_refused = IsFullFor(client);
  if (is_refused && refused_ >= limits_.refusals) {
    CloseDescriptor(descriptor);
    return;
  }
  auto *connection =
      new Connection(descriptor, address, {limits_, handler_, bodies_, repeated_bodies_, traffic_}, this);
  connections_.insert(connection, {client, is_refused});
  connect(connection, &QObject::destroyed, this, [this, connection] { Forget(connection); });
  if (is_refused) {
    ++refused_;
    connection->RefuseRequest(503);
  } else {
    ++served_[client];
  }
  if (!sweep_.isActive())
    sweep_.start(sweep_interval_ms);
}

void Server::Forget(Connection *connection) {
  const Place place = connections_.take(connection);
  if (place.is_refused)
    --refused_;
  else if (--served_[place.client] == 0)
    served_.remove(place.client);
  for (const std::unique_ptr<Listener> &listener : listeners_)
    listener->Resume();
  if (connections_.isEmpty())
    sweep_.stop();
}

bool Server::IsFullFor(const QHostAddress &client) const {
  return connections_.size() - refused_ >= limits_.connections ||
         served_.value(client) >= limits_.connections_of_a_client;
}

void Server::CheckTimes() {
  for (Connection *connection : connections_.keys())
    connection->CheckTime();
}

void Server::CutWhoTakesTooMuch() {
  // One body alone is sent, however large.
  while (bodies_.Bytes() > limits_.unsent && bodies_.Count() > 1) {
    Connection *slowest = nullptr;
    for (Connection *connection : connections_.keys())
      if (connection->HasUnsentBody() && (!slowest || connection->deadline() < slowest->deadline()))
        slowest = connection;
    slowest->Abort();
  }
}

}  // namespace borvane::mirror
