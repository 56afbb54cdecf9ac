#pragma once

#include <QLocalServer>
#include <QTimer>
#include <functional>

namespace borvane::mirror {

/// Counts the monitors that use the mirror, see common/attendance.h.
class Monitors {
 public:
  /// `end` is called when the last monitor has gone, or none has come.
  explicit Monitors(std::function<void()> end);

  /// Opens the local socket at that path and waits for the first monitor. Returns what went wrong; empty when all is
  /// well.
  QString Start(const QString &socket_path);

 private:
  void OnConnected();
  void OnDisconnected();

  QLocalServer server_;
  QTimer timeout_;
  int connected_ = 0;
};

}  // namespace borvane::mirror
