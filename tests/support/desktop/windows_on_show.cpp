#include "support/desktop/windows_on_show.h"

#include <QApplication>
#include <cstdio>

#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {

namespace {

void Say(const char *what) {
  std::printf("%s\n", what);
  std::fflush(stdout);
}

void WorkNotice(int function_key) {
  if (function_key == 1)
    notice->KeepOnTop(true);
  if (function_key == 7)
    notice->KeepOnTop(false);
  if (function_key == 1 || function_key == 2)
    notice->Show();
}

void WorkBar(int function_key) {
  switch (function_key) {
    case 3:
      bar_form->Show();
      break;
    case 4:
      bar_form->Hide();
      break;
    case 5:
      bar_form->KeepOnTop(true);
      break;
    case 6:
      bar_form->KeepOnTop(false);
      break;
    case 8:
      bar_form->Left = -1200.5F;
      bar_form->Height = 15;
      break;
    case 9:
      current->host().ShowPopupMenu(*bar_form, bar_form->Tmnu);
      break;
    default:
      break;
  }
}

void Work(int key_code) {
  constexpr int before_f1 = 111;
  const int function_key = key_code - before_f1;
  WorkNotice(function_key);
  WorkBar(function_key);
  if (function_key == 11)
    sample->Show();
  Say(("F" + std::to_string(function_key)).c_str());
}

}  // namespace

int ShowWindows() {
  const ScreenRig rig;
  sample->KeyUp = [](int key, int) { Work(key); };
  bar_form->KeyUp = [](int key, int) { Work(key); };
  bar_form->mnuExpand.Click = [] { Say("expand"); };
  bar_form->Left = 600;
  bar_form->Top = 3000;
  notice->MousePointer = pointer_custom;
  sample->Show();
  return QApplication::exec();
}

}  // namespace borvane
