#pragma once

#include <QPlainTextEdit>

namespace borvane {

/// A box to type many lines in, with what a QLineEdit offers. A carriage return and a line feed end each line but the
/// last, and positions count both.
class LinesEdit final : public QPlainTextEdit {
  Q_OBJECT

 public:
  explicit LinesEdit(QWidget *parent);

  QString text() const;
  void setText(const QString &text);

  int cursorPosition() const;
  void setCursorPosition(int position) { setSelection(position, 0); }

  bool hasSelectedText() const { return textCursor().hasSelection(); }
  int selectionStart() const;
  int selectionLength() const;
  void setSelection(int start, int length);

 Q_SIGNALS:
  /// The user has changed the text.
  void textEdited(const QString &text);

 private:
  int DocumentPositionOf(int position) const;
  int PositionOf(int document_position) const;

  bool is_set_by_program_ = false;
};

}  // namespace borvane
