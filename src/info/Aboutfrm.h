#pragma once

#include "controls/form.h"
#include "controls/form_set.h"

namespace borvane {

/// The about window.
struct AboutForm : FormBase {
  AboutForm()
      : FormBase({.Name = "Aboutfrm",
                  .Caption = "Borvane 2007",
                  .ClientWidth = 5595,
                  .ClientHeight = 2790,
                  .Border = BorderStyle::FixedSingle}) {}
};

inline constexpr Form<AboutForm> Aboutfrm;

}  // namespace borvane
