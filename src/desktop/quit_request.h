#pragma once

#include <QObject>
#include <functional>

namespace borvane {

/// Hears when the desktop wants the program to quit, which it does at a log-out. Its windows are not asked, of which
/// the records window would refuse.
class QuitRequest final : public QObject {
 public:
  /// `quit` is called for each request of the desktop; nothing else follows from one.
  explicit QuitRequest(std::function<void()> quit);

 protected:
  bool eventFilter(QObject *object, QEvent *event) override;

 private:
  std::function<void()> quit_;
};

}  // namespace borvane
