#pragma once

#include <QObject>
#include <QPoint>
#include <functional>
#include <map>
#include <optional>

class QWidget;

namespace borvane {

class Binder;

/// Knows which control of the program the user works in. It is left when another control of the program is entered or
/// its window hides, and not when the user turns to another program or answers a message box. A control that is entered
/// learns so after the one that is left for it.
class FocusTracker final : public QObject {
 public:
  FocusTracker();

  /// `binder` takes part from now on, with its widget and all that its widget consists of.
  void Add(Binder &binder);

  /// `binder` takes no part any more.
  void Forget(const Binder &binder);

  /// Whether the user works in the control of `binder`.
  bool IsIn(const Binder &binder) const { return focused_ == &binder || entering_ == &binder; }

  /// The user has done with `window`: if the control is one of its, it is left.
  void Leave(const QWidget &window);

  /// Does `work`, which the user has asked for with a key: a menu that it opens is at `place` on the screen.
  void OpenMenusAt(const QPoint &place, const std::function<void()> &work);

  /// Where a menu that opens now has to be; nothing for at the pointer.
  const std::optional<QPoint> &menu_place() const { return menu_place_; }

 private:
  /// The keyboard goes to `widget`: when that is another control, both learn so.
  void KeyboardMoved(QWidget *widget);
  Binder *BinderOf(const QWidget *widget) const;

  std::map<const QWidget *, Binder *> binders_;
  Binder *focused_ = nullptr;
  // Has the keyboard and will be entered when the other has been left. A control that was not entered is not left.
  Binder *entering_ = nullptr;
  std::optional<QPoint> menu_place_;
};

}  // namespace borvane
