#pragma once

#include <QWidget>
#include <deque>
#include <functional>
#include <map>
#include <vector>

#include "controls/form.h"
#include "desktop/widgets/binder.h"

namespace borvane {

/// Shows a window of the program: its frame and its controls. Controls are where the form's twips put them, unless a
/// window has a layout of its own.
class FormWindow : public QWidget, public PropertyWatcher {
 public:
  FormWindow(FormBase &form, FocusTracker &focus);

  FormBase &form() const { return form_; }

  /// Makes the widgets of the form's controls.
  virtual void Build();

  /// Takes window and widgets off the form, which is about to go.
  void Release();

  /// Shows the window, above `owner` if there is one, as FormHost::ShowForm says.
  void Present(FormWindow *owner, bool with_focus);

  /// Takes the window off the screen, which leaves the control that the user works in. A handler may run meanwhile.
  void Withdraw();

  /// Keeps the window above those of other programs, or no longer; open windows are switched without flicker.
  void KeepOnTop(bool on);

  /// A menu takes the keyboard: what is pressed now is released for the menu, and counts no more for the form.
  void ForgetPressedKeys() { pressed_keys_.clear(); }

 protected:
  /// Makes the widget of `control` in `parent`; null for a control that is never seen.
  QWidget *Bind(Control &control, QWidget &parent, Placing placing);

  /// Leaves the control that the user works in, if it is one of this window.
  void LeaveControl();

  /// Whether the form has gone and must not be touched any more.
  bool is_released() const { return is_released_; }

  void changeEvent(QEvent *event) override;
  void closeEvent(QCloseEvent *event) override;
  void resizeEvent(QResizeEvent *event) override;
  void moveEvent(QMoveEvent *event) override;
  void mouseMoveEvent(QMouseEvent *event) override;
  bool eventFilter(QObject *object, QEvent *event) override;

 private:
  void BindAll(const Container &container, QWidget &parent);
  void PropertyChanged(const PropertyBase &property) override;
  void ShowCaption();
  void ShowSize();
  void FollowFirstScreen();
  void ShowPlace();
  void ShowBackground();
  void ShowPointer();
  void KeyPressed(const QKeyEvent &event);
  bool MovesTheBar(const QKeyEvent &event) const;
  bool KeyReleased(const QKeyEvent &event);
  void Enter(const std::function<void()> &handler);

  FormBase &form_;
  FocusTracker &focus_;
  std::vector<Binder *> binders_;
  std::map<quint32, bool> pressed_keys_;  // by their place, each with whether Shift was held at its press
  std::deque<QPoint> asked_places_;       // the last ones that the form asked for, oldest first
  bool is_released_ = false;
};

}  // namespace borvane
