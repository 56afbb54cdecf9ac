#pragma once

#include <string>

#include <gtest/gtest.h>

#include "support/desktop/sample_form.h"
#include "support/desktop/screen_rig.h"

namespace borvane {

/// The sample's window is on the screen, and its key and resize events are recorded.
class FormOnScreen : public testing::Test {
 protected:
  FormOnScreen() {
    sample->KeyUp = [this](int key, int shift) {
      rig.note("key " + std::to_string(key) + (shift == 0 ? "" : " with " + std::to_string(shift)));
    };
    sample->Resize = [this] {
      rig.note("resize to " + std::to_string(static_cast<int>(sample->Width())) + " x " +
               std::to_string(static_cast<int>(sample->Height())));
    };
    sample->Show();
    Settle();
    rig.events();
  }

  FormWindow &window() const { return rig.window(*sample); }

  ScreenRig rig;
};

}  // namespace borvane
