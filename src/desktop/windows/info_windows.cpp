#include "desktop/windows/info_windows.h"

#include <QVBoxLayout>

#include "desktop/windows_1252.h"
#include "info/banner.h"
#include "info/nobotherfrm.h"

namespace borvane {

BannerWindow::BannerWindow(BannerForm &form, FocusTracker &focus) : FormWindow(form, focus), banner_(form) {}

void BannerWindow::Build() {
  constexpr int margin = 8;
  constexpr int side_of_words = 48;  // which breaks them into two lines of about one length
  auto *rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, margin, 0, margin);
  rows->setSpacing(margin);
  rows->addWidget(Bind(banner_.Label1, *this, Placing::ByLayout));

  QWidget *box = Bind(banner_.Picture1, *this, Placing::ByLayout);
  box->setCursor(Qt::PointingHandCursor);
  auto *inside = new QVBoxLayout(box);
  inside->setContentsMargins(margin, margin, margin, margin);
  inside->addWidget(Bind(banner_.Label3, *box, Placing::ByLayout), 0, Qt::AlignVCenter);
  rows->addWidget(box, 1);

  QWidget *words = Bind(banner_.Label2, *this, Placing::ByLayout);
  words->setContentsMargins(side_of_words, 0, side_of_words, 0);
  rows->addWidget(words);
}

UserNoteWindow::UserNoteWindow(UserNoteForm &form, FocusTracker &focus) : FormWindow(form, focus), note_(form) {}

void UserNoteWindow::Build() {
  FormWindow::Build();
  findChild<QWidget *>(ShownText(note_.Text1.FullName()))->setAccessibleName(ShownText(note_.Caption()));
}

}  // namespace borvane
