#include "desktop/services/message_box.h"

#include <QApplication>
#include <QMessageBox>

#include "desktop/windows_1252.h"

namespace borvane {

namespace {

MessageAnswer AnswerOf(int button) {
  switch (button) {
    case QMessageBox::Ok:
      return MessageAnswer::Ok;
    case QMessageBox::Yes:
      return MessageAnswer::Yes;
    case QMessageBox::No:
      return MessageAnswer::No;
    default:
      return MessageAnswer::Cancel;
  }
}

}  // namespace

MessageAnswer QtMessageBox::Show(std::string_view text, std::string_view title, MessageButtons buttons,
                                 MessageIcon icon) {
  const bool yes_no = buttons == MessageButtons::YesNo;
  const QMessageBox::StandardButton first = yes_no ? QMessageBox::Yes : QMessageBox::Ok;
  const QMessageBox::StandardButton refusal = yes_no ? QMessageBox::No : QMessageBox::Cancel;

  QMessageBox box(icon == MessageIcon::Question ? QMessageBox::Question : QMessageBox::NoIcon, ShownText(title),
                  ShownText(text), first | refusal, QApplication::activeWindow());
  box.setTextFormat(Qt::PlainText);
  box.setDefaultButton(first);
  box.setEscapeButton(refusal);
  return AnswerOf(box.exec());
}

}  // namespace borvane
