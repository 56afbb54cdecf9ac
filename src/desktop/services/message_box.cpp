#include "desktop/services/message_box.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QWindow>

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

struct FirstAndRefusal {
  QMessageBox::StandardButton first;
  QMessageBox::StandardButton refusal;  // for a box that is closed without a choice
};

FirstAndRefusal ButtonsOf(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::Ok:
      return {QMessageBox::Ok, QMessageBox::Ok};
    case MessageButtons::OkCancel:
      return {QMessageBox::Ok, QMessageBox::Cancel};
    default:
      return {QMessageBox::Yes, QMessageBox::No};
  }
}

/// A box over the window that the user works in. It does not belong to that window, which a timer may unload meanwhile.
class Question final : public QMessageBox {
 public:
  Question(Icon icon, const QString &title, const QString &text, StandardButtons buttons)
      : QMessageBox(icon, title, text, buttons), asker_(QApplication::activeWindow()) {
    create();
    if (asker_ != nullptr)
      windowHandle()->setTransientParent(asker_->windowHandle());
  }

 protected:
  void showEvent(QShowEvent *event) override {
    QMessageBox::showEvent(event);
    adjustPosition(asker_);
  }

 private:
  QPointer<QWidget> asker_;
};

}  // namespace

MessageAnswer QtMessageBox::Show(std::string_view text, std::string_view title, MessageButtons buttons,
                                 MessageIcon icon) {
  const auto [first, refusal] = ButtonsOf(buttons);
  Question box(icon == MessageIcon::Question ? QMessageBox::Question : QMessageBox::NoIcon, ShownText(title),
               ShownText(text), first | refusal);
  box.setTextFormat(Qt::PlainText);
  box.setDefaultButton(first);
  box.setEscapeButton(refusal);
  return AnswerOf(box.exec());
}

}  // namespace borvane
