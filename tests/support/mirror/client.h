#pragma once

#include <QByteArray>
#include <QHash>
#include <QHostAddress>
#include <QTcpSocket>
#include <optional>

namespace borvane::mirror {

/// An answer as it came over the wire.
struct Response {
  int status = 0;
  QHash<QByteArray, QByteArray> headers;  ///< under their names in lower case
  QByteArray body;
};

/// A client that sends any bytes and reads answers, waiting for them.
class Client {
 public:
  /// `from` is the address that the server is to see; null for the usual one.
  explicit Client(quint16 port, const QHostAddress &address = QHostAddress::LocalHost, const QHostAddress &from = {});

  /// Sends the bytes at once; false when the connection has ended.
  bool Send(const QByteArray &bytes);

  /// Sends the bytes one by one, each in a packet of its own.
  void SendByteByByte(const QByteArray &bytes);

  /// The next answer, whole; `has_body` is false for the answer to HEAD. Nothing when the connection ends before it or
  /// a minute pass.
  std::optional<Response> Read(bool has_body = true);

  /// Whether the server ends the connection within the time, having sent nothing more.
  bool EndsWithin(int milliseconds);

  /// Whether the connection is open.
  bool IsOpen();

  QTcpSocket &socket() { return socket_; }

 private:
  bool Fill(qsizetype length);

  QTcpSocket socket_;
  QByteArray received_;
};

/// The answer to `GET target` on a connection of its own.
std::optional<Response> Get(quint16 port, const QByteArray &target, const QByteArray &host = "southern.localhost");

}  // namespace borvane::mirror
