#pragma once

#include "controls/form.h"
#include "controls/form_set.h"

namespace borvane {

/// The support notice of the first runs.
struct BannerForm : FormBase {
  BannerForm() : FormBase({.Name = "banner", .Caption = "Borvane ", .ClientWidth = 7170, .ClientHeight = 1815}) {}
};

inline constexpr Form<BannerForm> banner;

}  // namespace borvane
