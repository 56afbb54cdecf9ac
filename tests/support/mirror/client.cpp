#include "support/mirror/client.h"

#include <QDeadlineTimer>

namespace borvane::mirror {

namespace {

constexpr int timeout_ms = 60'000;

}  // namespace

Client::Client(quint16 port, const QHostAddress &address, const QHostAddress &from) {
  if (!from.isNull())
    socket_.bind(from);
  socket_.setSocketOption(QAbstractSocket::LowDelayOption, 1);
  socket_.connectToHost(address, port);
  socket_.waitForConnected(timeout_ms);
  socket_.setSocketOption(QAbstractSocket::LowDelayOption, 1);
}

bool Client::Send(const QByteArray &bytes) {
  socket_.write(bytes);
  while (socket_.bytesToWrite() > 0)
    if (!socket_.waitForBytesWritten(timeout_ms))
      return false;
  return true;
}

void Client::SendByteByByte(const QByteArray &bytes) {
  for (const char byte : bytes)
    Send(QByteArray(1, byte));
}

std::optional<Response> Client::Read(bool has_body) {
  qsizetype end = -1;
  while ((end = received_.indexOf("\r\n\r\n")) < 0)
    if (!Fill(received_.size() + 1))
      return std::nullopt;
  if (!received_.startsWith("HTTP/1.1 "))
    return std::nullopt;
  const QList<QByteArray> lines = received_.first(end).split('\n');
  received_.remove(0, end + 4);

  Response response;
  response.status = lines[0].split(' ').value(1).toInt();
  for (const QByteArray &line : lines.sliced(1)) {
    const qsizetype colon = line.indexOf(':');
    response.headers.insert(line.first(colon).toLower(), line.sliced(colon + 1).trimmed());
  }
  const qsizetype length = has_body ? response.headers.value("content-length").toLongLong() : 0;
  if (!Fill(length))
    return std::nullopt;
  response.body = received_.first(length);
  received_.remove(0, length);
  return response;
}

bool Client::EndsWithin(int milliseconds) {
  const QDeadlineTimer deadline(milliseconds);
  while (IsOpen() && !deadline.hasExpired())
    socket_.waitForReadyRead(static_cast<int>(deadline.remainingTime()));
  return !IsOpen() && received_.isEmpty() && socket_.readAll().isEmpty();
}

bool Client::IsOpen() { return socket_.state() == QAbstractSocket::ConnectedState; }

bool Client::Fill(qsizetype length) {
  while (received_.size() < length) {
    if (socket_.bytesAvailable() == 0 && !socket_.waitForReadyRead(timeout_ms))
      return false;
    received_ += socket_.readAll();
  }
  return true;
}

std::optional<Response> Get(quint16 port, const QByteArray &target, const QByteArray &host) {
  Client client(port);
  client.Send("GET " + target + " HTTP/1.1\r\nHost: " + host + "\r\nConnection: close\r\n\r\n");
  return client.Read();
}

}  // namespace borvane::mirror
