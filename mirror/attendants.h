#pragma once

#include <QLocalServer>
#include <QTimer>
#include <functional>

namespace borvane::mirror {

/// Counts the monitors that use the mirror, see attendance.h.
class Attendants {
 public:
  /// `end` is called when the last monitor has gone, or none has come.
  explicit Attendants(std::function<void()> end);

  /// Opens the local socket of that name and waits for the first monitor. Gives what went wrong; empty when all is
  /// well.
  QString Start(const QString &socket_name);

 private:
  void Welcome();
  void Leave();

  QLocalServer server_;
  QTimer patience_;
  int present_ = 0;
};

}  // namespace borvane::mirror
