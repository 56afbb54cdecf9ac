#include "neighbour.h"

#include <QDeadlineTimer>
#include <QTcpSocket>

namespace borvane::mirror {

namespace {

constexpr int patience_ms = 2'000;
constexpr qsizetype longest_head = 16 * 1024;

}  // namespace

bool IsMirror(const QHostAddress &address, quint16 port) {
  const QDeadlineTimer deadline(patience_ms);
  const auto rest = [&] { return static_cast<int>(deadline.remainingTime()); };
  QTcpSocket socket;
  socket.connectToHost(address, port);
  if (!socket.waitForConnected(rest()))
    return false;
  socket.write("GET / HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n");

  QByteArray head;
  while (!head.contains("\r\n\r\n") && head.size() < longest_head && socket.waitForReadyRead(rest()))
    head += socket.readAll();
  head.truncate(head.indexOf("\r\n\r\n"));
  return head.startsWith("HTTP/1.") && head.contains("\r\nServer: borvane-mirror/");
}

}  // namespace borvane::mirror
