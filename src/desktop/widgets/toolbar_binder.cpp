#include <QToolButton>
#include <QVBoxLayout>
#include <list>

#include "desktop/widgets/binders.h"
#include "desktop/widgets/pictures.h"
#include "desktop/widgets/spoken_widget.h"
#include "desktop/windows_1252.h"

namespace borvane {

namespace {

/// Its button in the program says whether it is down.
class ToolButton final : public QToolButton {
 public:
  explicit ToolButton(QWidget *parent) : QToolButton(parent) {}

 protected:
  void nextCheckState() override {}
};

/// Shows one button of a toolbar.
class ButtonWatcher final : public PropertyWatcher {
 public:
  ButtonWatcher(ToolbarButton &button, ToolButton &widget) : button_(button), widget_(widget) {
    button_.Watch(this);
    PropertyChanged(button_.Value);
  }

  void PropertyChanged(const PropertyBase & /*property*/) override {
    widget_.setChecked(button_.Value() != 0);
    widget_.setEnabled(button_.Enabled());
  }

  void Release() { button_.Watch(nullptr); }

 private:
  ToolbarButton &button_;
  ToolButton &widget_;
};

class ToolbarBinder final : public Binder {
 public:
  ToolbarBinder(Toolbar &toolbar, QWidget &widget, const Surroundings &surroundings)
      : Binder(toolbar, widget, surroundings), toolbar_(toolbar) {
    auto *layout = new QVBoxLayout(&widget);
    layout->setContentsMargins(0, 0, 0, 0);
    for (int number = 1; number <= toolbar_.ButtonCount(); ++number)
      layout->addWidget(MakeButton(number));
  }

  void Release() override {
    Binder::Release();
    for (ButtonWatcher &watcher : watchers_)
      watcher.Release();
  }

 private:
  ToolButton *MakeButton(int number) {
    constexpr int picture_size = 24;
    ToolbarButton &button = toolbar_.Buttons(number);
    auto *widget = new ToolButton(&this->widget());
    widget->setObjectName(ShownText(button.Picture));
    widget->setToolTip(ShownText(button.ToolTipText));
    widget->setAccessibleName(widget->toolTip());
    widget->setIcon(PictureIcon(button.Picture));
    widget->setIconSize(QSize(picture_size, picture_size));
    widget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    widget->setCheckable(button.TwoState);
    widget->setAutoRaise(true);
    watchers_.emplace_back(button, *widget);
    connect(widget, &QToolButton::clicked, this, [this, number] { Enter([&] { toolbar_.Press(number); }); });
    // Assistive software switches the button over without a click. Its handler must not run inside of that: it may take
    // the button away.
    connect(
        widget, &QToolButton::toggled, this, [this, number, widget] { TakeSwitchedOver(number, *widget); },
        Qt::QueuedConnection);
    return widget;
  }

  void TakeSwitchedOver(int number, ToolButton &widget) {
    if (is_released())
      return;
    const bool is_down = toolbar_.Buttons(number).Value() != 0;
    if (widget.isChecked() == is_down)
      return;
    widget.setChecked(is_down);
    Enter([&] { toolbar_.Press(number); });
  }

  Toolbar &toolbar_;
  std::list<ButtonWatcher> watchers_;
};

}  // namespace

Binder *BindToolbar(Toolbar &toolbar, const Surroundings &surroundings) {
  return new ToolbarBinder(toolbar, *new SpokenWidget<QAccessible::ToolBar>(&surroundings.parent), surroundings);
}

}  // namespace borvane
