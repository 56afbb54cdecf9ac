#include <gtest/gtest.h>

#include "bars/Form1.h"
#include "support/program/bar_rig.h"

namespace borvane {
namespace {

TEST(ShortBarMenu, OpensByTheCheckBoxWhichNeverStaysTicked) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.tick(bar.Timer1, 7);
  int value_meanwhile = 0;
  rig.screen().on_popup = [&](Menu &) { value_meanwhile = bar.Check1.Value(); };
  rig.watch(bar.Check1, bar.Check1.Value, "Check1");
  rig.clear_trace();
  rig.tick_off(bar.Check1, 1);
  EXPECT_EQ(rig.trace(), (Lines{"set Check1=1", "popup Tmnu of Form1", "set Check1=0"}));
  EXPECT_EQ(value_meanwhile, 1);
  EXPECT_EQ(bar.IdleTicks, 0);
  rig.clear_trace();
  rig.tick_off(bar.Check1, 2);
  EXPECT_EQ(rig.trace(), (Lines{"set Check1=2", "set Check1=0"}));
}

TEST(ShortBarMenu, OpensByTheMenuKeyAndByShiftF10) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.tick(bar.Timer1, 7);
  rig.key(bar, key_menu);
  EXPECT_EQ(bar.IdleTicks, 0);
  rig.key(bar, key_f10, 1);
  rig.key(bar, key_f10, 5);
  EXPECT_EQ(rig.trace(), (Lines{"popup Tmnu of Form1", "popup Tmnu of Form1", "popup Tmnu of Form1"}));
  rig.clear_trace();
  rig.key(bar, key_f10);
  rig.key(bar, key_f10, 6);
  EXPECT_TRUE(rig.trace().empty());
}

TEST(ShortBarMenu, SettingsOpensTheSettingsWindow) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.choose_next(bar.mnuSetings);
  rig.tick_off(bar.Check1, 1);
  EXPECT_EQ(rig.trace(), (Lines{"popup Tmnu of Form1", "show conffrm"}));
  EXPECT_EQ(bar.Label4.ForeColor(), 255U);
  EXPECT_TRUE(conffrm->Timer1.Enabled());
  EXPECT_EQ(bar.Check1.Value(), 0);
}

TEST(ShortBarMenu, ExpandReturnsToTheWindow) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.choose_next(bar.mnuRecords);
  rig.tick_off(bar.Check1, 1);
  EXPECT_EQ(rig.trace(), (Lines{"popup Tmnu of Form1", "show frmRecords", "hide Form1"}));
  EXPECT_EQ(Module1->BarMode, face_records);
  EXPECT_FALSE(bar.Timer1.Enabled());
  EXPECT_NE(Form1.IfLoaded(), nullptr);
}

TEST(ShortBarMenu, ExpandLeavesABarThatReturnsStopped) {
  RecordProperty("quirk", "short-bar-returns-stopped");
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.click(bar.mnuRecords);
  Module1->LastAlertTime = "kept";
  frmRecords->ListView2.ListItems.SetText(1, "9");
  rig.open_short_bar();
  EXPECT_EQ(&bar, &*Form1);
  EXPECT_TRUE(bar.IsShown());
  EXPECT_EQ(Module1->BarMode, face_short_bar);
  EXPECT_EQ(Module1->LastAlertTime, "kept");
  EXPECT_FALSE(bar.Timer1.Enabled());
  EXPECT_EQ(bar.Label1(0).Caption(), "Mag: 2.0");
  EXPECT_EQ(bar.Check2.Value(), 1);
  rig.tick_off(bar.Check2, 0);
  rig.tick_off(bar.Check2, 1);
  EXPECT_TRUE(bar.Timer1.Enabled());
  EXPECT_EQ(bar.Label1(0).Caption(), "Mag: 9");
}

TEST(ShortBarMenu, MoreInfoOpensThePageOfTheFirstRow) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.click(bar.mnuRecentWW);
  const std::string page = southern + "/recenteqs/Quakes/ci37868143.html";
  EXPECT_EQ(rig.trace(), Lines{"open " + page + " for Form1"});
  EXPECT_EQ(Module1->OpenLinkTarget, page);
}

TEST(ShortBarMenu, MoreInfoOpensNoPageForALinkWithoutASlash) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  Module1->OpenLinkTarget = "old";
  std::vector<std::string> row = BarRig::row("1.0", "Near");
  row[7] = "ci1.html";
  BarRig::list({row});
  rig.choose_next(bar.mnuRecentWW);
  rig.tick_off(bar.Check1, 1);
  EXPECT_EQ(rig.trace(), (Lines{"popup Tmnu of Form1", "open  for Form1"})) << "the desktop opens no empty address";
  EXPECT_EQ(Module1->OpenLinkTarget, "");
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST(ShortBarMenu, MoreInfoOfAnEmptyListEndsTheProgram) {
  RecordProperty("quirk", "more-info-of-an-empty-list-ends-the-program");
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  BarRig::list({});
  rig.click(bar.mnuRecentWW);
  EXPECT_EQ(rig.trace({"error", "open"}), Lines{"error report 9 Subscript out of range"});
  EXPECT_EQ(rig.end_status(), 1);
}

TEST(ShortBarMenu, StrongMotionMapsOpensTheirArchive) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.click(bar.mnuStrong);
  const std::string archive = "http://strongmotion.localhost:17650/research/strongmotion/effects/shake/archive/";
  EXPECT_EQ(rig.trace({"open"}), Lines{"open " + archive + " for Form1"});
  EXPECT_EQ(Module1->OpenLinkTarget, archive);
}

TEST(ShortBarMenu, OnTopWaitsForTheNextLoad) {
  RecordProperty("quirk", "short-bar-on-top-waits");
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  EXPECT_FALSE(bar.mnuTop.Checked());
  rig.click(bar.mnuTop);
  EXPECT_TRUE(bar.mnuTop.Checked());
  rig.click(bar.mnuTop);
  EXPECT_FALSE(bar.mnuTop.Checked());
  EXPECT_EQ(rig.trace(), (Lines{"write TopForm=1", "write TopForm=0"}));
}

TEST(ShortBarMenu, AboutShowsTheAboutWindow) {
  BarRig rig;
  rig.click(rig.open_short_bar().mnuAbout);
  EXPECT_EQ(rig.trace({"load", "show"}), (Lines{"load Aboutfrm", "show Aboutfrm"}));
}

TEST(ShortBarMenu, ExitEndsTheProgram) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.choose_next(bar.mnuQuit);
  rig.tick_off(bar.Check1, 1);
  EXPECT_EQ(rig.end_status(), 0);
  EXPECT_EQ(Form1.IfLoaded(), nullptr);
}

// The faces.

/// Which faces are on the screen: R, S and L.
std::string Shown() {
  const auto is_shown = [](const FormBase *form) { return form != nullptr && form->IsShown(); };
  return std::string(frmRecords->IsShown() ? "R" : "") + (is_shown(Form1.IfLoaded()) ? "S" : "") +
         (is_shown(newTagFrm.IfLoaded()) ? "L" : "");
}

TEST(Faces, TakeEachOthersPlaceInEveryOrder) {
  BarRig rig;
  for (const char face : std::string("SSLLSLLSSL")) {
    if (face == 'S')
      rig.open_short_bar();
    else
      rig.open_long_bar();
    EXPECT_EQ(Shown(), std::string(1, face));
    EXPECT_EQ(Module1->BarMode, face == 'S' ? face_short_bar : face_long_bar);
    rig.click(face == 'S' ? Form1->mnuRecords : newTagFrm->mnuRecrs);
    EXPECT_EQ(Shown(), "R");
    EXPECT_EQ(Module1->BarMode, face_records);
  }
}

TEST(Faces, ChangeWhileAPageIsFetched) {
  for (const char face : std::string("SL")) {
    BarRig rig;
    rig.serve(los_angeles, Page(Row("6.5")));
    rig.during_request(los_angeles, [&] {
      if (face == 'S')
        rig.open_short_bar();
      else
        rig.open_long_bar();
    });
    rig.refresh();
    EXPECT_EQ(Shown(), std::string(1, face));
    EXPECT_EQ(Newest(), "6.5");
    EXPECT_EQ(rig.end_status(), std::nullopt);
  }
}

TEST(Faces, ReturnWhileAPageIsFetched) {
  for (const char face : std::string("SL")) {
    BarRig rig;
    Control &expand = face == 'S' ? static_cast<Control &>(rig.open_short_bar().mnuRecords)
                                  : static_cast<Control &>(rig.open_long_bar().mnuRecrs);
    rig.serve(los_angeles, Page(Row("6.5")));
    rig.during_request(los_angeles, [&] { rig.click(expand); });
    rig.refresh();
    EXPECT_EQ(Shown(), "R");
    EXPECT_EQ(Newest(), "6.5");
    EXPECT_TRUE(frmRecords->Timer1.Enabled());
  }
}

}  // namespace
}  // namespace borvane
