#pragma once

#include "desktop/windows/form_window.h"

namespace borvane {

struct BannerForm;
struct UserNoteForm;

/// The banner. Its white box is across the window, however wide the user makes it.
class BannerWindow final : public FormWindow {
 public:
  BannerWindow(BannerForm &form, FocusTracker &focus);

  void Build() override;

 private:
  BannerForm &banner_;
};

/// The note to the user. Its box is named by the window's title.
class UserNoteWindow final : public FormWindow {
 public:
  UserNoteWindow(UserNoteForm &form, FocusTracker &focus);

  void Build() override;

 private:
  UserNoteForm &note_;
};

}  // namespace borvane
