#pragma once

#include "controls/form.h"
#include "controls/form_set.h"

namespace borvane {

/// The short bar.
struct ShortBarForm : FormBase {
  ShortBarForm() : FormBase({.Name = "Form1", .Caption = "Borvane", .ClientWidth = 3000, .ClientHeight = 300}) {}
};

inline constexpr Form<ShortBarForm> Form1;

}  // namespace borvane
