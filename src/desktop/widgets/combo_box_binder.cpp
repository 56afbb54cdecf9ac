#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "desktop/widgets/binders.h"
#include "desktop/windows_1252.h"

namespace borvane {

namespace {

/// A wheel that turns over the closed box must not pick another entry, also while the user works in it: a wheel is
/// turned to see more, and each pick is stored at once. The open list scrolls.
class ComboBoxWidget final : public QComboBox {
 public:
  explicit ComboBoxWidget(QWidget *parent) : QComboBox(parent) { setFocusPolicy(Qt::StrongFocus); }

 protected:
  void wheelEvent(QWheelEvent *event) override { event->ignore(); }
};

class ComboBoxBinder final : public Binder {
 public:
  ComboBoxBinder(ComboBox &combo_box, ComboBoxWidget &widget, const Surroundings &surroundings)
      : Binder(combo_box, widget, surroundings), combo_box_(combo_box), box_(widget) {
    constexpr int entries_without_scrolling = 25;
    box_.setMaxVisibleItems(entries_without_scrolling);
    if (combo_box_.editable())
      MakeEditable();
    for (int position = 0; position < combo_box_.ListCount(); ++position)
      box_.addItem(ShownText(combo_box_.List(position)));
    ShowText();
    connect(&box_, &QComboBox::activated, this, [this](int position) { Enter([&] { combo_box_.Select(position); }); });
  }

 protected:
  void Show(const PropertyBase & /*property*/) override { ShowText(); }

 private:
  void MakeEditable() {
    box_.setEditable(true);
    box_.setInsertPolicy(QComboBox::NoInsert);
    box_.setCompleter(nullptr);
    // Typing an entry's text is no picking: the box itself would take it for one when it is left.
    disconnect(box_.lineEdit(), &QLineEdit::editingFinished, &box_, nullptr);
    connect(box_.lineEdit(), &QLineEdit::textEdited, this, &ComboBoxBinder::Take);
    // Assistive software writes without editing. The program must not run inside of that: it may take the box away.
    connect(box_.lineEdit(), &QLineEdit::textChanged, this, &ComboBoxBinder::TakeWritten, Qt::QueuedConnection);
  }

  void Take(const QString &text) {
    const QPointer<ComboBoxBinder> self(this);
    Enter([&] { combo_box_.Text = EditedText(combo_box_.Text(), text); });
    // The program reports no change where a character that it cannot hold takes the place of a "?" that it holds.
    if (!self.isNull() && !is_released())
      ShowText();
  }

  /// The box cuts a text that is too long for it: that is nobody's doing.
  void TakeWritten() {
    if (is_released())
      return;
    const QLineEdit &edit = *box_.lineEdit();
    if (!box_.isEnabled())
      ShowText();
    else if (edit.text() != ShownText(combo_box_.Text()).left(edit.maxLength()))
      Visit([this, text = edit.text()] { Take(text); });
  }

  void ShowText() {
    const QString text = ShownText(combo_box_.Text());
    if (box_.currentText() == text)
      return;
    const QSignalBlocker quiet(box_);
    const int position = box_.findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    box_.setCurrentIndex(position);
    if (combo_box_.editable())
      box_.setEditText(text);
  }

  ComboBox &combo_box_;
  ComboBoxWidget &box_;
};

}  // namespace

Binder *BindComboBox(ComboBox &combo_box, const Surroundings &surroundings) {
  return new ComboBoxBinder(combo_box, *new ComboBoxWidget(&surroundings.parent), surroundings);
}

}  // namespace borvane
