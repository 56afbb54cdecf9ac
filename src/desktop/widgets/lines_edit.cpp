#include "desktop/widgets/lines_edit.h"

#include <QScopedValueRollback>
#include <QTextDocument>
#include <algorithm>

namespace borvane {

namespace {

bool EndsLine(QChar c) { return c == QChar::ParagraphSeparator || c == QChar::LineSeparator; }

}  // namespace

LinesEdit::LinesEdit(QWidget *parent) : QPlainTextEdit(parent) {
  setTabChangesFocus(true);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  connect(this, &QPlainTextEdit::textChanged, this, [this] {
    if (!is_set_by_program_)
      Q_EMIT textEdited(text());
  });
}

QString LinesEdit::text() const {
  // Its plain text would have a blank for each blank that does not break a line.
  QString text = document()->toRawText();
  text.replace(QChar::ParagraphSeparator, QLatin1String("\r\n"));
  return text.replace(QChar::LineSeparator, QLatin1String("\r\n"));
}

void LinesEdit::setText(const QString &text) {
  const QScopedValueRollback<bool> by_program(is_set_by_program_, true);
  setPlainText(text);
}

int LinesEdit::cursorPosition() const { return PositionOf(textCursor().position()); }

int LinesEdit::selectionStart() const { return PositionOf(textCursor().selectionStart()); }

int LinesEdit::selectionLength() const { return PositionOf(textCursor().selectionEnd()) - selectionStart(); }

void LinesEdit::setSelection(int start, int length) {
  QTextCursor cursor(document());
  cursor.setPosition(DocumentPositionOf(start));
  cursor.setPosition(DocumentPositionOf(start + length), QTextCursor::KeepAnchor);
  setTextCursor(cursor);
}

/// The document has one character for the end of a line.
int LinesEdit::DocumentPositionOf(int position) const {
  return position - static_cast<int>(text().left(position).count(QLatin1Char('\n')));
}

int LinesEdit::PositionOf(int document_position) const {
  const QString before = document()->toRawText().left(document_position);
  return document_position + static_cast<int>(std::count_if(before.begin(), before.end(), EndsLine));
}

}  // namespace borvane
