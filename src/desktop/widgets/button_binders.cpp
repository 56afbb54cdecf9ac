#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QPushButton>
#include <QRadioButton>

#include "desktop/widgets/binders.h"
#include "desktop/widgets/colors.h"
#include "desktop/windows_1252.h"

namespace borvane {

namespace {

/// A click ticks or clears the box; only the program can bring it into its third state.
class CheckBoxWidget final : public QCheckBox {
 public:
  explicit CheckBoxWidget(QWidget *parent) : QCheckBox(parent) {}

 protected:
  void nextCheckState() override { setCheckState(checkState() == Qt::Unchecked ? Qt::Checked : Qt::Unchecked); }
};

class CheckBoxBinder final : public Binder {
 public:
  CheckBoxBinder(CheckBox &check_box, CheckBoxWidget &widget, const Surroundings &surroundings)
      : Binder(check_box, widget, surroundings), check_box_(check_box), box_(widget) {
    if (!check_box_.spoken_name().empty())
      box_.setAccessibleName(ShownText(check_box_.spoken_name()));
    // A box has the colour of a button by itself.
    box_.setBackgroundRole(QPalette::Window);
    box_.setAutoFillBackground(check_box_.back_color() != color_button_face);
    ShowColor();
    ShowCaption();
    ShowValue();
    connect(&box_, &QCheckBox::clicked, this,
            [this](bool checked) { Enter([&] { check_box_.Value = checked ? 1 : 0; }); });
    // Assistive software switches the box over without a click. Its handler must not run inside of that: it may take
    // the box away.
    connect(&box_, &QCheckBox::toggled, this, &CheckBoxBinder::TakeSwitchedOver, Qt::QueuedConnection);
  }

 protected:
  void Show(const PropertyBase &property) override {
    if (&property == &check_box_.Value)
      ShowValue();
    else
      ShowCaption();
  }

 private:
  /// A colour of the system is another one when the desktop's colours change.
  bool eventFilter(QObject *object, QEvent *event) override {
    if (event->type() == QEvent::PaletteChange && object == &box_ && !is_released())
      ShowColor();
    return Binder::eventFilter(object, event);
  }

  void ShowColor() { box_.setPalette(BackgroundPalette(check_box_.back_color(), QApplication::palette())); }

  void ShowCaption() { box_.setText(ShownText(check_box_.Caption())); }

  void ShowValue() {
    const int value = check_box_.Value();
    box_.setCheckState(value == 0 ? Qt::Unchecked : value == 1 ? Qt::Checked : Qt::PartiallyChecked);
  }

  void TakeSwitchedOver() {
    const bool is_marked = box_.isChecked();
    if (!is_released() && is_marked != (check_box_.Value() != 0))
      Enter([&] { check_box_.Value = is_marked ? 1 : 0; });
  }

  CheckBox &check_box_;
  CheckBoxWidget &box_;
};

/// A choice. The arrow keys and clicks of a group choose another one; the program can also clear all of them.
class OptionButtonBinder final : public Binder {
 public:
  OptionButtonBinder(OptionButton &option_button, QRadioButton &widget, const Surroundings &surroundings)
      : Binder(option_button, widget, surroundings), option_button_(option_button), radio_(widget) {
    ShowCaption();
    ShowValue();
    connect(&radio_, &QRadioButton::clicked, this, [this] { Enter([&] { option_button_.Value = true; }); });
    // As for a check box.
    connect(&radio_, &QRadioButton::toggled, this, &OptionButtonBinder::TakeSwitchedOver, Qt::QueuedConnection);
  }

 protected:
  void Show(const PropertyBase &property) override {
    if (&property == &option_button_.Value)
      ShowValue();
    else
      ShowCaption();
  }

 private:
  void ShowCaption() { radio_.setText(ShownText(option_button_.Caption())); }

  void ShowValue() {
    // An automatically exclusive group would keep its last choice.
    radio_.setAutoExclusive(false);
    radio_.setChecked(option_button_.Value());
    radio_.setAutoExclusive(true);
  }

  void TakeSwitchedOver() {
    if (!is_released() && radio_.isChecked() && !option_button_.Value())
      Enter([&] { option_button_.Value = true; });
  }

  OptionButton &option_button_;
  QRadioButton &radio_;
};

class CommandButtonBinder final : public Binder {
 public:
  CommandButtonBinder(CommandButton &button, QPushButton &widget, const Surroundings &surroundings)
      : Binder(button, widget, surroundings), button_(button), push_button_(widget) {
    push_button_.setAutoDefault(false);
    Show(button_.Caption);
    connect(&push_button_, &QPushButton::clicked, this, [this] { Enter([&] { button_.Click.Raise(); }); });
  }

 protected:
  void Show(const PropertyBase & /*property*/) override { push_button_.setText(ShownText(button_.Caption())); }

 private:
  CommandButton &button_;
  QPushButton &push_button_;
};

}  // namespace

Binder *BindCheckBox(CheckBox &check_box, const Surroundings &surroundings) {
  return new CheckBoxBinder(check_box, *new CheckBoxWidget(&surroundings.parent), surroundings);
}

Binder *BindOptionButton(OptionButton &option_button, const Surroundings &surroundings) {
  return new OptionButtonBinder(option_button, *new QRadioButton(&surroundings.parent), surroundings);
}

Binder *BindCommandButton(CommandButton &button, const Surroundings &surroundings) {
  return new CommandButtonBinder(button, *new QPushButton(&surroundings.parent), surroundings);
}

}  // namespace borvane
