#pragma once

#include <string_view>

#include "controls/form.h"

namespace borvane {

/// A small window of its own colour in the middle of the first screen, which leaves the keyboard where it is.
struct SmallNotice : FormBase {
  explicit SmallNotice(std::string_view name)
      : FormBase({.Name = name,
                  .Caption = "Notice",
                  .ClientWidth = 1710,
                  .ClientHeight = 780,
                  .Border = BorderStyle::FixedDialog,
                  .Start = StartPlace::MiddleOfFirstScreen,
                  .BackColor = 0x301800,
                  .TakesFocus = false}) {}
};

}  // namespace borvane
