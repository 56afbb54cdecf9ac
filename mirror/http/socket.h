#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QSocketNotifier>
#include <functional>

#include "http/memory_file.h"

namespace borvane::mirror {

/// What an attempt to receive came to.
enum class Received {
  Bytes,
  Nothing,  ///< nothing has come yet
  End,      ///< the client sends nothing more, but may still take what it is sent
  Failure,  ///< the connection is broken
};

/// An accepted TCP connection whose calls never block. QTcpSocket closes a connection as soon as the client has ended
/// its sending side; this one goes on sending.
class Socket {
 public:
  /// Takes over the connected, non-blocking socket `descriptor`. The functions are called from the event loop while
  /// there is something to receive, and while there is room to send.
  Socket(qintptr descriptor, const std::function<void()> &on_receivable, const std::function<void()> &on_sendable);

  /// Closes the connection. What was sent and has not arrived yet is still delivered.
  ~Socket();

  Socket(const Socket &) = delete;
  Socket &operator=(const Socket &) = delete;

  /// Appends what has come to `bytes`.
  Received Receive(QByteArray &bytes);

  /// Sends from the start of `bytes` what there is room for. Gives how many bytes that were; -1 when the connection is
  /// broken. With `more_follows` the system may wait for what comes next, to send both in one packet.
  qsizetype Send(QByteArrayView bytes, bool more_follows = false);

  /// The same with `size` bytes of the file from the byte `from` on.
  qsizetype SendFile(const MemoryFile &file, qsizetype from, qsizetype size);

  /// Ends the sending side: the client receives the end after what was sent before.
  void EndSending();

  void WatchReceiving(bool on) { receivable_.setEnabled(on); }
  void WatchSending(bool on) { sendable_.setEnabled(on); }

 private:
  const qintptr descriptor_;
  QSocketNotifier receivable_;
  QSocketNotifier sendable_;
};

/// The address of the client at the other side of a connection; null when it has gone.
QHostAddress PeerAddress(qintptr descriptor);

/// Closes a connection that no Socket has taken over.
void CloseDescriptor(qintptr descriptor);

/// Accepts a connection that waits at the listening socket; the descriptor does not block. -1 when there is none, or
/// when the system has no room for one more, and `is_exhausted` says which.
qintptr Accept(qintptr listener, bool &is_exhausted);

}  // namespace borvane::mirror
