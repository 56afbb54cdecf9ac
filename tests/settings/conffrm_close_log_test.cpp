#include <gtest/gtest.h>

#include "settings/conffrm.h"
#include "support/program/log_rig.h"

namespace borvane {
namespace {

TEST(CloseButton, WritesTheLogAndThenEnablesLogs) {
  LogRig rig;
  rig.add_row("2.0", {"a", "b"});
  conffrm->Check1.Value = 1;
  rig.watch(frmRecords->Label5, frmRecords->Label5.Enabled, "Label5");
  rig.clear_trace();
  rig.click(conffrm->Command2);
  EXPECT_EQ(rig.log(), "2.0 a b\r\n");
  EXPECT_EQ(rig.trace({"write", "append", "set"}),
            (Lines{"write LogAll=True", "append " + log_path + " ", "append " + log_path + " 2.0 a b\r\n",
                   "set Label5=true", "write EdgeDetect= 0"}));
}

TEST(CloseButton, WritesNoLogWhileTheBoxIsNotTicked) {
  for (const int value : {0, 2}) {
    LogRig rig;
    rig.add_row("2.0", {"a", "b"});
    conffrm->Check1.Value = value;
    rig.clear_trace();
    rig.click(conffrm->Command2);
    EXPECT_EQ(rig.trace({"folder", "exists", "make-folder", "append"}), Lines{}) << value;
  }
}

TEST(CloseButton, WritesNoLogWithoutRows) {
  LogRig rig;
  conffrm->Check1.Value = 1;
  rig.clear_trace();
  rig.click(conffrm->Command2);
  EXPECT_EQ(rig.trace({"folder", "exists", "make-folder", "append"}), Lines{});
}

}  // namespace
}  // namespace borvane
