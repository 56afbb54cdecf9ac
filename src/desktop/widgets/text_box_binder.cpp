#include <QLineEdit>
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
    connect(&edit_, &QLineEdit::textEdited, this,
            [this](const QString &text) { Enter([&] { text_box_.Text = ProgramText(text); }); });
  }

 protected:
  void Show(const PropertyBase & /*property*/) override {
    const QString text = ShownText(text_box_.Text());
    if (edit_.text() == text)
      return;
    const int cursor = edit_.cursorPosition();
    edit_.setText(text);
    edit_.setCursorPosition(std::min(cursor, static_cast<int>(text.size())));
  }

 private:
  TextBox &text_box_;
  QLineEdit &edit_;
};

}  // namespace

Binder *BindTextBox(TextBox &text_box, const Surroundings &surroundings) {
  return new TextBoxBinder(text_box, *new QLineEdit(&surroundings.parent), surroundings);
}

}  // namespace borvane
