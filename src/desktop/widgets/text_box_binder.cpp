#include <QLineEdit>
#include <QPointer>
#include <algorithm>

#include "desktop/widgets/binders.h"
#include "desktop/windows_1252.h"

namespace borvane {

namespace {

class TextBoxBinder final : public Binder {
 public:
  TextBoxBinder(TextBox &text_box, QLineEdit &edit, const Surroundings &surroundings)
      : Binder(text_box, edit, surroundings), text_box_(text_box), edit_(edit) {
    edit_.setText(ShownText(text_box_.Text()));
    connect(&edit_, &QLineEdit::textEdited, this, &TextBoxBinder::Take);
  }

 protected:
  void Show(const PropertyBase & /*property*/) override { ShowText(); }

 private:
  void Take(const QString &text) {
    const QPointer<TextBoxBinder> self(this);
    Enter([&] { text_box_.Text = EditedText(text_box_.Text(), text); });
    // The program reports no change where a character that it cannot hold takes the place of a "?" that it holds.
    if (!self.isNull() && !is_released())
      ShowText();
  }

  void ShowText() {
    const QString text = ShownText(text_box_.Text());
    if (edit_.text() == text)
      return;
    const int cursor = edit_.cursorPosition();
    edit_.setText(text);
    edit_.setCursorPosition(std::min(cursor, static_cast<int>(text.size())));
  }

  TextBox &text_box_;
  QLineEdit &edit_;
};

}  // namespace

Binder *BindTextBox(TextBox &text_box, const Surroundings &surroundings) {
  return new TextBoxBinder(text_box, *new QLineEdit(&surroundings.parent), surroundings);
}

}  // namespace borvane
