#pragma once

#include "controls/control_array.h"
#include "controls/form.h"
#include "controls/form_set.h"
#include "controls/label.h"

namespace borvane {

/// The short bar.
struct ShortBarForm : FormBase {
  ShortBarForm() : FormBase({.Name = "Form1", .Caption = "Borvane", .ClientWidth = 7935, .ClientHeight = 435}) {}

  ControlArray<Label, 3> Label1{*this, "Label1", {}};
};

inline constexpr Form<ShortBarForm> Form1;

}  // namespace borvane
