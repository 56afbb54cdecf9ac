#pragma once

#include <QMessageBox>
#include <QTimer>
#include <functional>

namespace borvane {

/// Does what a user does with the message box that opens next. The test fails when none opens in the lifetime of this
/// object, or when the box stays open, which is closed in the end.
class NextMessageBox {
 public:
  explicit NextMessageBox(std::function<void(QMessageBox &)> user);
  NextMessageBox(const NextMessageBox &) = delete;
  NextMessageBox &operator=(const NextMessageBox &) = delete;
  ~NextMessageBox();

 private:
  void Look();

  std::function<void(QMessageBox &)> user_;
  QTimer look_;
  QTimer timeout_;
  bool was_open_ = false;
};

}  // namespace borvane
