#pragma once

#include <QObject>

namespace borvane {

/// Ends the program through `QuitProgram` when the desktop asks it to quit, which it does at a log-out. Nobody is
/// asked: Qt would ask the windows, and the records window refuses.
class QuitRequest final : public QObject {
 public:
  QuitRequest();

 protected:
  bool eventFilter(QObject *object, QEvent *event) override;
};

}  // namespace borvane
