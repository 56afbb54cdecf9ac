#include "bars/newTagFrm.h"

#include <gtest/gtest.h>

#include "support/program/bar_rig.h"

namespace borvane {
namespace {

TEST(LongBarForm, HasItsDesign) {
  const BarRig rig;
  // A form of its own, which no Load has placed.
  LongBarForm bar;
  EXPECT_EQ(bar.name(), "newTagFrm");
  EXPECT_EQ(bar.Caption(), "Form2");
  EXPECT_EQ(bar.spoken_name(), "Borvane Long Bar");
  EXPECT_EQ(bar.border(), BorderStyle::None);
  EXPECT_EQ(bar.Height(), 360);
  EXPECT_EQ(bar.ScaleHeight(), 360);
  EXPECT_TRUE(bar.takes_focus());
  EXPECT_EQ(bar.Picture1.BackColor(), 0U);
  EXPECT_EQ(bar.Check1.Width(), 270);
  EXPECT_EQ(bar.Check1.Height(), 240);
  EXPECT_EQ(bar.Check1.back_color(), 0x800080U);
  EXPECT_EQ(bar.Check1.spoken_name(), "Menu");
  EXPECT_EQ(bar.Timer1.Interval(), 1000);
  EXPECT_FALSE(bar.Timer1.Enabled());
  EXPECT_EQ(bar.IdleTicks, 0);
  EXPECT_EQ(bar.EdgeTicks, 0);
  for (int i = 0; i < 3; ++i) {
    for (const Label *label : {&bar.Label1(i), &bar.Label2(i)}) {
      EXPECT_EQ(&label->container(), &bar.Picture1);
      EXPECT_TRUE(label->auto_size());
      EXPECT_EQ(label->font().name, "Arial");
      EXPECT_EQ(label->font().size, 8.25F);
      EXPECT_EQ(label->back_color(), std::nullopt);
    }
    EXPECT_EQ(bar.Label1(i).ForeColor(), 0xFFFFFFU);
    EXPECT_EQ(bar.Label2(i).ForeColor(), 0xE0E0E0U);
    EXPECT_EQ(bar.Label1(i).alignment(), Alignment::Left);
    EXPECT_EQ(bar.Label2(i).alignment(), Alignment::Right);
  }
}

TEST(LongBarForm, HasItsMenu) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  EXPECT_EQ(bar.Tmnu.Caption(), "Menu");
  Lines captions;
  for (Control *entry : bar.Tmnu.children()) {
    auto *item = dynamic_cast<MenuItem *>(entry);
    ASSERT_NE(item, nullptr);
    captions.push_back(item->FullName() + " " + item->Caption());
  }
  EXPECT_EQ(captions, (Lines{"mnuRefresh Refresh", "mnuRecentWW More Info", "mnuStrong Strong Motion Maps", "sep1 -",
                             "mnuRecrs Expand", "mnuSettings Settings", "sep2 -", "mnuTop On Top", "mnuabout About",
                             "mnuQuit Exit"}));
}

// Load.

TEST(LongBarLoad, RunsItsStepsInOrder) {
  BarRig rig;
  rig.store()["TopForm"] = "1";
  rig.store()["LastBig"] = "5.2";
  conffrm->Text3.Text = "300";
  rig.screen().on_load = [&](FormBase &form) {
    auto &bar = dynamic_cast<LongBarForm &>(form);
    rig.watch(bar, bar.Top, "Top");
    rig.watch(bar, bar.Left, "Left");
    rig.watch(bar, bar.Width, "Width");
    rig.watch(bar.Picture1, bar.Picture1.Left, "Picture1.Left");
    rig.watch(bar.Picture1, bar.Picture1.Width, "Picture1.Width");
    rig.watch(bar.Check1, bar.Check1.Left, "Check1.Left");
    rig.watch(bar.Check1, bar.Check1.Value, "Check1.Value");
    rig.watch(bar.Timer1, bar.Timer1.Interval, "Interval");
  };
  rig.clear_trace();
  rig.happen([] { static_cast<void>(*newTagFrm); });
  EXPECT_EQ(rig.trace(),
            (Lines{"load newTagFrm", "read TopForm", "set Top=300", "set Picture1.Width=8550", "set Check1.Left=8680",
                   "set Interval=700", "topmost newTagFrm", "set Left=0", "set Width=19200", "set Top=0",
                   "set Picture1.Width=19100", "set Check1.Left=18830", "read LastBig", "read BigPlace", "read BigTime",
                   "read BigDate", "set Check1.Value=1"}));
  EXPECT_EQ(newTagFrm->Picture1.Left(), 80);
  EXPECT_EQ(Module1->BarMode, face_long_bar);
  EXPECT_FALSE(newTagFrm->Timer1.Enabled());
  EXPECT_EQ(newTagFrm->Label2(0).Caption(), "Strong: 5.2");
}

TEST(LongBarLoad, PutsTheBarAcrossTheTopWhateverIsStored) {
  RecordProperty("quirk", "long-bar-ignores-its-stored-place");
  BarRig rig;
  rig.store()["longTop"] = "2000";
  rig.store()["longLeft"] = "-500";
  rig.store()["longWidth"] = "4000";
  conffrm->Check6.Value = 1;
  conffrm->Text3.Text = "150";
  LongBarForm &bar = rig.open_long_bar();
  EXPECT_EQ(bar.Top(), 0);
  EXPECT_EQ(bar.Left(), 0);
  EXPECT_EQ(bar.Width(), BarRig::screen_width);
}

// The menu's handle.

TEST(LongBarHandle, StaysTickedWhenItIsClicked) {
  RecordProperty("quirk", "menu-handle-stays-ticked");
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  EXPECT_EQ(bar.Check1.Value(), 1);
  rig.tick_off(bar.Check1, 0);
  EXPECT_EQ(bar.Check1.Value(), 1);
  EXPECT_TRUE(rig.trace().empty());
}

TEST(LongBarHandle, SaysItsStateUnderThePointer) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  EXPECT_EQ(bar.Check1.ToolTipText(), "");
  rig.move_mouse_over(bar.Check1, 0, 0);
  EXPECT_EQ(bar.Check1.ToolTipText(), "ON");
  bar.Check1.Click = [] {};
  bar.Check1.Value = 0;
  rig.move_mouse_over(bar.Check1, 0, 0);
  EXPECT_EQ(bar.Check1.ToolTipText(), "OFF");
}

TEST(LongBarHandle, OpensTheMenuByTheRightButtonAlone) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  bar.Top = 150.5F;
  std::string text_meanwhile;
  rig.screen().on_popup = [&](Menu &) { text_meanwhile = conffrm->Text3.Text(); };
  rig.release_mouse_on(bar.Check1, 1);
  rig.release_mouse_on(bar.Check1, 4);
  EXPECT_TRUE(rig.trace().empty());
  rig.release_mouse_on(bar.Check1, 2);
  EXPECT_EQ(rig.trace(), Lines{"popup Tmnu of newTagFrm"});
  EXPECT_EQ(text_meanwhile, "150.5");
}

TEST(LongBarHandle, OpensTheMenuByTheMenuKeyAndByShiftF10) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  bar.Top = -75;
  rig.key(bar, key_menu);
  rig.key(bar, key_f10, 1);
  rig.key(bar, key_f10);
  EXPECT_EQ(rig.trace(), (Lines{"popup Tmnu of newTagFrm", "popup Tmnu of newTagFrm"}));
  EXPECT_EQ(conffrm->Text3.Text(), "-75");
}

TEST(LongBarHandle, WritesTheTopAsADisplayedNumber) {
  BarRig rig;
  rig.region().SetDecimalSeparator(',');
  LongBarForm &bar = rig.open_long_bar();
  bar.Top = 0.5F;
  rig.release_mouse_on(bar.Check1, 2);
  EXPECT_EQ(conffrm->Text3.Text(), "0,5");
}

// The menu.

TEST(LongBarMenu, RefreshLetsOneFollowSoon) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  for (const auto &[text, count] :
       std::initializer_list<std::pair<const char *, int>>{{"700", 699}, {"abc", -1}, {"2.5", 2}, {"32768", 32767}}) {
    conffrm->Text2.Text = text;
    rig.click(bar.mnuRefresh);
    EXPECT_EQ(Module1->RefreshCount, count) << text;
  }
  conffrm->Text2.Text = "700";
  rig.click(bar.mnuRefresh);
  rig.tick(frmRecords->Timer1, 11);
  EXPECT_EQ(rig.fetches(), 1);
}

TEST(LongBarMenu, RefreshEndsTheProgramForAThresholdBeyondSixteenBits) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  conffrm->Text2.Text = "32769";
  rig.click(bar.mnuRefresh);
  EXPECT_EQ(rig.trace({"error"}), Lines{"error report 6 Overflow"});
}

TEST(LongBarMenu, MoreInfoOpensTheListOfTheWorld) {
  RecordProperty("quirk", "long-bar-opens-the-world-list");
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  rig.click(bar.mnuRecentWW);
  EXPECT_EQ(rig.trace({"open"}), Lines{"open http://worldlist.localhost:17650/recenteqsww/ for newTagFrm"});
  EXPECT_EQ(Module1->OpenLinkTarget, "http://worldlist.localhost:17650/recenteqsww/");
}

TEST(LongBarMenu, StrongMotionMapsOpensTheirArchive) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  rig.click(bar.mnuStrong);
  EXPECT_EQ(rig.trace({"open"}),
            Lines{"open http://strongmotion.localhost:17650/research/strongmotion/effects/shake/archive/ for "
                  "newTagFrm"});
}

TEST(LongBarMenu, ExpandUnloadsTheBar) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  bar.Timer1.Enabled = true;
  rig.watch(bar.Timer1, bar.Timer1.Enabled, "Timer1");
  rig.choose_next(bar.mnuRecrs);
  rig.release_mouse_on(bar.Check1, 2);
  EXPECT_EQ(rig.trace(), (Lines{"popup Tmnu of newTagFrm", "set Timer1=false", "show frmRecords", "hide newTagFrm",
                                "unload newTagFrm"}));
  EXPECT_EQ(Module1->BarMode, face_records);
  EXPECT_EQ(newTagFrm.IfLoaded(), nullptr);
}

TEST(LongBarMenu, ExpandByTheKeyboardLeavesNothingUndone) {
  BarRig rig;
  conffrm->Check6.Value = 1;
  LongBarForm &bar = rig.open_long_bar();
  rig.choose_next(bar.mnuRecrs);
  rig.key(bar, key_menu);
  EXPECT_EQ(rig.trace({"unload", "load", "write"}),
            (Lines{"unload newTagFrm", "write longTop=0", "write longLeft=0", "write longWidth=19200"}));
}

TEST(LongBarMenu, ExpandLetsTheNextBarBeNew) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  bar.IdleTicks = 5;
  bar.EdgeTicks = 3;
  bar.Timer1.Enabled = true;
  rig.click(bar.mnuRecrs);
  rig.open_long_bar();
  EXPECT_EQ(newTagFrm->IdleTicks, 0);
  EXPECT_EQ(newTagFrm->EdgeTicks, 0);
  EXPECT_FALSE(newTagFrm->Timer1.Enabled());
  EXPECT_TRUE(newTagFrm->IsShown());
}

TEST(LongBarMenu, SettingsOpensTheSettingsWindowWithTheBarsTop) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  bar.Top = 450;
  bar.Check1.Click = [] {};
  bar.Check1.Value = 0;
  rig.click(bar.mnuSettings);
  EXPECT_EQ(rig.trace(), Lines{"show conffrm"});
  EXPECT_EQ(bar.Check1.Value(), 1);
  EXPECT_TRUE(conffrm->Timer1.Enabled());
  EXPECT_EQ(conffrm->Text3.Text(), "450");
}

TEST(LongBarMenu, OnTopActsAtOnce) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  rig.click(bar.mnuTop);
  EXPECT_TRUE(bar.mnuTop.Checked());
  rig.click(bar.mnuTop);
  EXPECT_EQ(rig.trace(), (Lines{"topmost newTagFrm", "write TopForm=1", "not-topmost newTagFrm", "write TopForm=0"}));
}

TEST(LongBarMenu, AboutShowsTheAboutWindow) {
  BarRig rig;
  rig.click(rig.open_long_bar().mnuabout);
  EXPECT_EQ(rig.trace({"load", "show"}), (Lines{"load Aboutfrm", "show Aboutfrm"}));
}

TEST(LongBarMenu, ExitEndsTheProgram) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  rig.choose_next(bar.mnuQuit);
  rig.release_mouse_on(bar.Check1, 2);
  EXPECT_EQ(rig.end_status(), 0);
}

// The labels.

TEST(LongBarLabels, OfTheNewestEventOpenThePageOfTheSelectedOne) {
  RecordProperty("quirk", "label-click-opens-the-selected-row");
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  std::vector<std::string> second = BarRig::row("1.0", "Far");
  second[7] = "second.html";
  BarRig::list({BarRig::row("2.0", "Near"), second});
  frmRecords->ListView1.ListItems.Choose(2);
  for (int i = 0; i < 3; ++i) {
    rig.clear_trace();
    rig.click(bar.Label1(i));
    EXPECT_EQ(rig.trace(), Lines{"open " + southern + "/second.html for newTagFrm"});
    EXPECT_FALSE(bar.Label2(i).Click.IsWired());
  }
}

TEST(LongBarLabels, OfTheStrongestEventShowTheHeadlineWhileTheSnapshotIsOn) {
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  frmRecords->Label3.Caption = "Mag: 5.8";
  rig.move_mouse_over(bar.Label2(2), 0, 0);
  EXPECT_EQ(bar.Label2(2).ToolTipText(), "World: Mag: 5.8");
  conffrm->Check5.Value = 0;
  rig.move_mouse_over(bar.Label2(0), 0, 0);
  EXPECT_EQ(bar.Label2(0).ToolTipText(), "");
}

TEST(LongBarLabels, OfTheStrongestEventAlonePassTheMoveOn) {
  RecordProperty("quirk", "newest-events-labels-pass-no-move-on");
  BarRig rig;
  LongBarForm &bar = rig.open_long_bar();
  conffrm->Check5.Value = 0;
  for (int i = 0; i < 3; ++i) {
    bar.Left = 0;
    rig.move_mouse_over(bar.Label2(i), BarRig::screen_width - 1600, 100);
    EXPECT_EQ(bar.Left(), -900) << i;
    EXPECT_FALSE(bar.Label1(i).MouseMove.IsWired());
  }
}

}  // namespace
}  // namespace borvane
