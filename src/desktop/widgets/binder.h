#pragma once

#include <QObject>
#include <QPoint>
#include <functional>

#include "controls/control.h"
#include "controls/property.h"

class QEvent;
class QMouseEvent;
class QString;
class QWidget;

namespace borvane {

class FocusTracker;

/// How the widgets of a window get their places.
enum class Placing { ByTwips, ByLayout };

/// What a widget needs of the window around it.
struct Surroundings {
  QWidget &parent;
  Placing placing;
  FocusTracker &focus;
};

/// Keeps a widget and a control the same: shows each change of the control, and turns what the user does with the
/// widget into the control's events. It belongs to its widget.
class Binder : public QObject, public PropertyWatcher {
 public:
  Control &control() const { return control_; }
  QWidget &widget() const { return widget_; }

  /// Takes the binder off its control, which is about to go; the widget then does nothing any more.
  virtual void Release();

  /// The user has come to the control.
  void Entered();

  /// The user has gone on to another control.
  void Left();

  /// The one way for an event of the widget into the program. A handler may unload the window: after this returns, the
  /// control must not be touched.
  void Enter(const std::function<void()> &handler);

  /// The same for a key that stands in for the pointer: a menu that opens meanwhile is at `place` on the screen.
  void EnterWithMenuAt(const QPoint &place, const std::function<void()> &handler);

  void PropertyChanged(const PropertyBase &property) final;

 protected:
  Binder(Control &control, QWidget &widget, const Surroundings &surroundings);

  /// Does `work` for assistive software: while the user works elsewhere, the control is entered for it and left again.
  void Visit(const std::function<void()> &work);

  /// Shows a change of a property of the control's own kind. Called for Visible as well, before the widget shows.
  virtual void Show(const PropertyBase & /*property*/) {}

  /// Gives the widget the control's place.
  virtual void Place();

  /// Where the positions of the control's mouse events count from, in the widget's pixels.
  virtual QPoint MouseOrigin() const { return {}; }

  bool is_released() const { return is_released_; }
  Placing placing() const { return placing_; }

  bool eventFilter(QObject *object, QEvent *event) override;

 private:
  bool RaiseMouseUp(QMouseEvent &event);

  Control &control_;
  QWidget &widget_;
  FocusTracker &focus_;
  const Placing placing_;
  bool is_released_ = false;
};

/// The pointer of `event`, with its place in twips from `origin`.
MouseState MouseStateOf(const QMouseEvent &event, const QPoint &origin = {});

}  // namespace borvane
