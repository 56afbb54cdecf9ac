#include <QLineEdit>
#include <QPointer>
#include <QScopedValueRollback>
#include <algorithm>
#include <type_traits>

#include "desktop/widgets/binders.h"
#include "desktop/widgets/lines_edit.h"
#include "desktop/windows_1252.h"

namespace borvane {

namespace {

/// What is selected in a box, and where its cursor is where nothing is.
template <class Edit>
TextSelection SelectionOf(const Edit &edit) {
  return edit.hasSelectedText() ? TextSelection{.start = edit.selectionStart(), .length = edit.selectionLength()}
                                : TextSelection{.start = edit.cursorPosition(), .length = 0};
}

/// Keeps a text box and a widget of either kind, with one line or with many, the same.
template <class Edit>
class TextBoxBinder final : public Binder {
 public:
  TextBoxBinder(TextBox &text_box, Edit &edit, const Surroundings &surroundings)
      : Binder(text_box, edit, surroundings), text_box_(text_box), edit_(edit) {
    edit_.setText(ShownText(text_box_.Text()));
    connect(&edit_, &Edit::textEdited, this, &TextBoxBinder::Take);
    // Assistive software writes without editing. The program must not run inside of that: it may take the box away. A
    // box of many lines reports both alike.
    if constexpr (std::is_same_v<Edit, QLineEdit>)
      connect(&edit_, &Edit::textChanged, this, &TextBoxBinder::TakeWritten, Qt::QueuedConnection);
    connect(&edit_, &Edit::selectionChanged, this, &TextBoxBinder::TakeSelection);
    connect(&edit_, &Edit::cursorPositionChanged, this, &TextBoxBinder::TakeSelection);
  }

 protected:
  void Show(const PropertyBase &property) override {
    if (&property == &text_box_.Selection)
      ShowSelection();
    else
      ShowText();
  }

 private:
  void Take(const QString &text) {
    const QPointer<TextBoxBinder> self(this);
    Enter([&] { text_box_.Text = EditedText(text_box_.Text(), text); });
    // The program reports no change where a character that it cannot hold takes the place of a "?" that it holds.
    if (!self.isNull() && !is_released())
      ShowText();
  }

  /// The box cuts a text that is too long for it: that is nobody's doing.
  void TakeWritten() {
    if (is_released())
      return;
    if (!edit_.isEnabled())
      ShowText();
    else if (edit_.text() != ShownText(text_box_.Text()).left(edit_.maxLength()))
      Visit([this, text = edit_.text()] { Take(text); });
  }

  void ShowText() {
    const QString text = ShownText(text_box_.Text());
    if (edit_.text() == text)
      return;
    const int cursor = edit_.cursorPosition();
    edit_.setText(text);
    edit_.setCursorPosition(std::min(cursor, static_cast<int>(text.size())));
  }

  /// The user selects, or the cursor moves: no event of the program's, so this enters it by no handler.
  void TakeSelection() {
    if (!is_released() && !is_selecting_)
      text_box_.Selection = SelectionOf(edit_);
  }

  void ShowSelection() {
    const auto [wanted_start, wanted_length] = text_box_.Selection();
    const int size = static_cast<int>(edit_.text().size());
    const int start = std::clamp(wanted_start, 0, size);
    const TextSelection selection{start, std::clamp(wanted_length, 0, size - start)};
    if (SelectionOf(edit_) == selection)
      return;
    const QScopedValueRollback<bool> by_program(is_selecting_, true);
    edit_.setSelection(selection.start, selection.length);
  }

  TextBox &text_box_;
  Edit &edit_;
  bool is_selecting_ = false;
};

}  // namespace

Binder *BindTextBox(TextBox &text_box, const Surroundings &surroundings) {
  if (text_box.multi_line())
    return new TextBoxBinder<LinesEdit>(text_box, *new LinesEdit(&surroundings.parent), surroundings);
  return new TextBoxBinder<QLineEdit>(text_box, *new QLineEdit(&surroundings.parent), surroundings);
}

}  // namespace borvane
