#include "desktop/widgets/binder.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QWidget>

#include "core/dispatch.h"
#include "desktop/widgets/focus_tracker.h"
#include "desktop/widgets/key_codes.h"
#include "desktop/widgets/label_text.h"
#include "desktop/widgets/twips.h"
#include "desktop/windows_1252.h"

namespace borvane {

MouseState MouseStateOf(const QMouseEvent &event, const QPoint &origin) {
  constexpr int left = 1;
  constexpr int right = 2;
  constexpr int middle = 4;
  const Qt::MouseButtons buttons = event.type() == QEvent::MouseMove ? event.buttons() : event.button();
  int button = 0;
  button |= buttons.testFlag(Qt::LeftButton) ? left : 0;
  button |= buttons.testFlag(Qt::RightButton) ? right : 0;
  button |= buttons.testFlag(Qt::MiddleButton) ? middle : 0;
  const QPointF position = event.position() - origin;
  return {.button = button,
          .shift = ShiftStateOf(event.modifiers()),
          .x = static_cast<float>(position.x()) * twips_per_pixel,
          .y = static_cast<float>(position.y()) * twips_per_pixel};
}

Binder::Binder(Control &control, QWidget &widget, const Surroundings &surroundings)
    : QObject(&widget), control_(control), widget_(widget), focus_(surroundings.focus), placing_(surroundings.placing) {
  control.Watch(this);
  focus_.Add(*this);
  widget.installEventFilter(this);
  widget.setObjectName(ShownText(control.FullName()));
  widget.setToolTip(HoverText(control.ToolTipText()));
  widget.setEnabled(control.Enabled());
  if (!control.Visible())
    widget.hide();
  if (control.MouseMove.IsWired())
    widget.setMouseTracking(true);
  if (placing_ == Placing::ByTwips)
    widget.setGeometry(RectOf(control.Left(), control.Top(), control.Width(), control.Height()));
}

void Binder::Release() {
  is_released_ = true;
  control_.Watch(nullptr);
  focus_.Forget(*this);
}

void Binder::Entered() {
  Enter([this] { control_.GotFocus.Raise(); });
}

void Binder::Left() {
  Enter([this] { control_.LostFocus.Raise(); });
}

void Binder::EnterWithMenuAt(const QPoint &place, const std::function<void()> &handler) {
  focus_.OpenMenusAt(place, [&] { Enter(handler); });
}

void Binder::Visit(const std::function<void()> &work) {
  if (focus_.IsIn(*this)) {
    work();
    return;
  }
  const QPointer<Binder> self(this);
  Entered();
  if (!self.isNull())
    work();
  if (!self.isNull() && !is_released_ && !focus_.IsIn(*this))
    Left();
}

void Binder::PropertyChanged(const PropertyBase &property) {
  if (&property == &control_.Left || &property == &control_.Top || &property == &control_.Width ||
      &property == &control_.Height) {
    if (placing_ == Placing::ByTwips)
      Place();
  } else if (&property == &control_.Visible) {
    Show(property);
    widget_.setVisible(control_.Visible());
  } else if (&property == &control_.Enabled) {
    widget_.setEnabled(control_.Enabled());
  } else if (&property == &control_.ToolTipText) {
    widget_.setToolTip(HoverText(control_.ToolTipText()));
  } else {
    Show(property);
  }
}

void Binder::Place() {
  widget_.setGeometry(RectOf(control_.Left(), control_.Top(), control_.Width(), control_.Height()));
}

void Binder::Enter(const std::function<void()> &handler) {
  if (!is_released_)
    Dispatch(handler);
}

bool Binder::eventFilter(QObject *object, QEvent *event) {
  if (is_released_ || object != &widget_)
    return false;
  switch (event->type()) {
    case QEvent::MouseMove:
      if (!control_.MouseMove.IsWired())
        return false;
      Enter([&] { control_.MouseMove.Raise(MouseStateOf(static_cast<QMouseEvent &>(*event), MouseOrigin())); });
      return true;
    case QEvent::MouseButtonRelease:
      return control_.MouseUp.IsWired() && RaiseMouseUp(static_cast<QMouseEvent &>(*event));
    default:
      return false;
  }
}

/// MouseUp comes when the widget has done with the release: a check box has its new value by then.
bool Binder::RaiseMouseUp(QMouseEvent &event) {
  const QPointer<QWidget> widget(&widget_);
  const QPoint origin = MouseOrigin();
  static_cast<QObject &>(widget_).event(&event);
  if (widget)
    Enter([&] { control_.MouseUp.Raise(MouseStateOf(event, origin)); });
  return true;
}

}  // namespace borvane
