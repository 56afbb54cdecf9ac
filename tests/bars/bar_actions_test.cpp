#include "bars/bar_actions.h"

#include <gtest/gtest.h>

#include "support/program/bar_rig.h"

namespace borvane {
namespace {

/// What a click on a bar's text does while nothing is listed.
template <class Bar>
void ExpectTheEnd(Bar &(BarRig::*open_bar)()) {
  for (int i = 0; i < 3; ++i) {
    BarRig rig;
    Bar &bar = (rig.*open_bar)();
    BarRig::list({});
    rig.clear_trace();
    rig.click(bar.Label1(i));
    EXPECT_EQ(rig.trace({"error", "open"}), Lines{"error report 91 Object variable not set"}) << i;
    EXPECT_EQ(rig.end_status(), 1) << i;
  }
}

TEST(BarLabels, EndTheProgramWhileTheListIsEmpty) {
  RecordProperty("quirk", "label-of-an-empty-list-ends-the-program");
  ExpectTheEnd(&BarRig::open_short_bar);
  ExpectTheEnd(&BarRig::open_long_bar);
}

}  // namespace
}  // namespace borvane
