#pragma once

#include "controls/form.h"
#include "controls/form_set.h"
#include "controls/label.h"
#include "controls/text_box.h"

namespace borvane {

/// A note that asks who uses the program. Nothing opens it.
struct UserNoteForm : FormBase {
  UserNoteForm();

  TextBox Text1{*this, "Text1", {.MultiLine = true, .Left = 120, .Top = 120, .Width = 8115, .Height = 2475}};
  Label Label1{*this,
               "Label1",
               {.Caption = "This screen will not show again", .Left = 120, .Top = 2715, .Width = 8115, .Height = 225}};

  void Form_Load() override;
};

inline constexpr Form<UserNoteForm> nobotherfrm;

}  // namespace borvane
