#pragma once

#include "controls/form.h"
#include "controls/form_set.h"

namespace borvane {

/// The long bar.
struct LongBarForm : FormBase {
  LongBarForm() : FormBase({.Name = "newTagFrm", .Caption = "Borvane", .ClientWidth = 9000, .ClientHeight = 300}) {}
};

inline constexpr Form<LongBarForm> newTagFrm;

}  // namespace borvane
