#include "desktop/widgets/focus_tracker.h"

#include <QApplication>
#include <QScopedValueRollback>
#include <QWidget>
#include <utility>

#include "desktop/widgets/binder.h"

namespace borvane {

FocusTracker::FocusTracker() {
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget * /*old*/, QWidget *now) { KeyboardMoved(now); });
}

void FocusTracker::Add(Binder &binder) { binders_[&binder.widget()] = &binder; }

void FocusTracker::Forget(const Binder &binder) {
  binders_.erase(&binder.widget());
  if (focused_ == &binder)
    focused_ = nullptr;
  if (entering_ == &binder)
    entering_ = nullptr;
}

void FocusTracker::Leave(const QWidget &window) {
  if (entering_ != nullptr && entering_->widget().window() == &window)
    entering_ = nullptr;
  if (focused_ != nullptr && focused_->widget().window() == &window)
    std::exchange(focused_, nullptr)->Left();
}

void FocusTracker::OpenMenusAt(const QPoint &place, const std::function<void()> &work) {
  const QScopedValueRollback<std::optional<QPoint>> here(menu_place_, place);
  work();
}

void FocusTracker::KeyboardMoved(QWidget *widget) {
  Binder *entered = BinderOf(widget);
  if (entered == nullptr || entered == focused_ || entered == entering_)
    return;
  entering_ = entered;
  if (Binder *left = std::exchange(focused_, nullptr))
    left->Left();
  // Its handler may have moved the keyboard on, or taken the window of either away.
  if (entering_ != entered)
    return;
  focused_ = std::exchange(entering_, nullptr);
  entered->Entered();
}

/// The control to which `widget` belongs: a button of a toolbar is a widget of its own. Null for what is no control,
/// such as a message box or the list that a combo box drops.
Binder *FocusTracker::BinderOf(const QWidget *widget) const {
  for (; widget != nullptr && !widget->isWindow(); widget = widget->parentWidget()) {
    const auto place = binders_.find(widget);
    if (place != binders_.end())
      return place->second;
  }
  return nullptr;
}

}  // namespace borvane
