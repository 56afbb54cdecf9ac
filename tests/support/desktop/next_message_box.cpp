#include "support/desktop/next_message_box.h"

#include <QApplication>
#include <utility>

#include <gtest/gtest.h>

#include "support/desktop/timeout.h"

namespace borvane {

namespace {

QMessageBox *OpenBox() { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()); }

}  // namespace

NextMessageBox::NextMessageBox(std::function<void(QMessageBox &)> user) : user_(std::move(user)) {
  constexpr int interval = 5;  // milliseconds
  look_.callOnTimeout([this] { Look(); });
  look_.start(interval);
  timeout_.callOnTimeout([] {
    if (QMessageBox *box = OpenBox()) {
      ADD_FAILURE() << "the message box stays open: " << box->text().toStdString();
      box->done(QMessageBox::NoButton);
    }
  });
  timeout_.start(timeout);
}

NextMessageBox::~NextMessageBox() { EXPECT_TRUE(was_open_) << "no message box has opened"; }

void NextMessageBox::Look() {
  QMessageBox *box = OpenBox();
  if (box == nullptr)
    return;
  look_.stop();
  was_open_ = true;
  user_(*box);
}

}  // namespace borvane
