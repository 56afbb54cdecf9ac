#include "bars/Form1.h"

#include <gtest/gtest.h>

#include "support/program/bar_rig.h"

namespace borvane {
namespace {

/// Whether a control is where and as large as given.
testing::AssertionResult IsAt(const Control &control, float left, float top, float width, float height) {
  if (control.Left() == left && control.Top() == top && control.Width() == width && control.Height() == height)
    return testing::AssertionSuccess();
  return testing::AssertionFailure() << control.FullName() << " is at " << control.Left() << ", " << control.Top()
                                     << " with " << control.Width() << " x " << control.Height();
}

TEST(ShortBarForm, HasItsDesign) {
  Rig rig;
  rig.start();
  ShortBarForm &bar = *Form1;
  EXPECT_EQ(bar.name(), "Form1");
  EXPECT_EQ(bar.border(), BorderStyle::None);
  EXPECT_EQ(bar.Width(), 7935);
  EXPECT_EQ(bar.Height(), 435);
  EXPECT_EQ(bar.ScaleWidth(), 7935);
  EXPECT_TRUE(bar.takes_focus());
  EXPECT_EQ(bar.spoken_name(), "Borvane Short Bar");

  EXPECT_TRUE(IsAt(bar.Picture1, 75, 45, 7215, 350));
  EXPECT_EQ(bar.Picture1.BackColor(), 0U);
  EXPECT_TRUE(IsAt(bar.Check1, 7365, 10, 225, 195));
  EXPECT_EQ(bar.Check1.ToolTipText(), "Menu");
  EXPECT_EQ(bar.Check1.spoken_name(), "Menu");
  EXPECT_EQ(bar.Check1.Value(), 0);
  EXPECT_TRUE(IsAt(bar.Check2, 7365, 225, 225, 195));
  EXPECT_EQ(bar.Check2.ToolTipText(), "ON/OFF");
  EXPECT_EQ(bar.Check2.spoken_name(), "Auto Refresh");
  EXPECT_FALSE(bar.Timer1.Enabled());
}

TEST(ShortBarForm, TicksEachSecondByDesign) {
  const BarRig rig;
  // A form of its own, which no Load has placed.
  const ShortBarForm bar;
  EXPECT_EQ(bar.Timer1.Interval(), 1000);
  EXPECT_FALSE(bar.Timer1.Enabled());
}

TEST(ShortBarForm, HasTheLabelsOfItsDesign) {
  Rig rig;
  rig.start();
  ShortBarForm &bar = *Form1;
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(&bar.Label1(i).container(), &bar.Picture1);
    EXPECT_TRUE(bar.Label1(i).auto_size());
    EXPECT_EQ(bar.Label1(i).back_color(), std::nullopt);
    EXPECT_EQ(bar.Label1(i).ForeColor(), 0x80000013U);
    EXPECT_EQ(bar.Label1(i).ToolTipText(), "Latest Event/ Click to expand");
  }
  EXPECT_EQ(bar.Label5.Caption(), "ON");
  EXPECT_EQ(bar.Label5.Left(), 7620);
  EXPECT_EQ(bar.Label5.Top(), 165);
  EXPECT_EQ(bar.Label5.font().name, "Arial");
  EXPECT_EQ(bar.Label5.font().size, 9);
  EXPECT_TRUE(bar.Label5.Bold());
  EXPECT_FALSE(bar.Label5.Enabled());
  EXPECT_EQ(bar.Label5.back_color(), std::nullopt);
}

TEST(ShortBarForm, HasTwoLabelsBelowItsEdge) {
  RecordProperty("quirk", "labels-below-the-short-bar");
  Rig rig;
  rig.start();
  ShortBarForm &bar = *Form1;
  EXPECT_EQ(bar.Label4.Caption(), "Menu");
  EXPECT_EQ(bar.Label4.Left(), 6705);
  EXPECT_EQ(bar.Label4.Top(), 525);
  EXPECT_EQ(bar.Label4.ForeColor(), 0xFFFFFFU);
  EXPECT_EQ(bar.Label4.back_color(), 0x008000U);
  EXPECT_EQ(bar.Label2.Caption(), "http://maker.localhost:17650/");
  EXPECT_EQ(bar.Label2.Left(), 240);
  EXPECT_EQ(bar.Label2.Top(), 855);
  for (const Label *label : {&bar.Label4, &bar.Label2})
    EXPECT_GT(label->Top(), bar.ScaleHeight());
}

TEST(ShortBarForm, HasItsMenu) {
  Rig rig;
  rig.start();
  EXPECT_EQ(Form1->Tmnu.Caption(), "Menu");
  EXPECT_FALSE(Form1->Tmnu.Visible());
  Lines captions;
  for (Control *entry : Form1->Tmnu.children()) {
    auto *item = dynamic_cast<MenuItem *>(entry);
    ASSERT_NE(item, nullptr);
    captions.push_back(item->FullName() + " " + item->Caption());
  }
  EXPECT_EQ(captions,
            (Lines{"mnuSetings Settings", "mnuRecords Expand", "sep1 -", "mnuRecentWW More Info",
                   "mnuStrong Strong Motion Maps", "sep2 -", "mnuTop On Top", "mnuAbout About", "mnuQuit Exit"}));
}

// Load.

TEST(ShortBarLoad, RunsItsStepsInOrder) {
  BarRig rig;
  rig.store()["TopForm"] = "1";
  frmRecords->StatusBar1.Panels(3).Text = "";
  frmRecords->Toolbar1.Buttons(1).Value = 0;
  frmRecords->Timer1.Enabled = false;
  rig.clock().Set({.year = 2018, .month = 2, .day = 7, .hour = 9, .minute = 8, .second = 7});
  rig.screen().on_load = [&](FormBase &form) {
    auto &bar = dynamic_cast<ShortBarForm &>(form);
    rig.watch(bar, bar.Top, "Top");
    rig.watch(bar, bar.Left, "Left");
    rig.watch(bar.Timer1, bar.Timer1.Interval, "Interval");
    rig.watch(bar.Timer1, bar.Timer1.Enabled, "Timer1");
    rig.watch(bar.Check2, bar.Check2.Value, "Check2");
    rig.watch(bar.Label1(0), bar.Label1(0).Caption, "Label1(0)");
    rig.watch(bar.Label5, bar.Label5.Enabled, "Label5");
    rig.watch(frmRecords->Timer1, frmRecords->Timer1.Enabled, "records.Timer1");
    rig.watch(frmRecords->Toolbar1.Buttons(1), frmRecords->Toolbar1.Buttons(1).Value, "Buttons(1)");
    rig.watch(frmRecords->StatusBar1.Panels(3), frmRecords->StatusBar1.Panels(3).Text, "Panels(3)");
  };
  rig.clear_trace();
  rig.happen([] { static_cast<void>(*Form1); });
  EXPECT_EQ(rig.trace({"load", "read", "set", "topmost", "not-topmost"}),
            (Lines{"read Hosts\\Maker", "load Form1", "read TopForm", "set Top=0", "set Left=50", "set Interval=700",
                   "topmost Form1", "set Check2=1", "set Label1(0)=Mag: 2.0", "set Timer1=true",
                   "set records.Timer1=true", "set Label5=true", "set Buttons(1)=1", "set Panels(3)=Auto Refresh On"}));
  EXPECT_EQ(Module1->LastAlertTime, "02-07-2018 09:08:6");
  EXPECT_EQ(Module1->BarMode, face_short_bar);
}

TEST(ShortBarLoad, SwitchesTheRefreshOnWhereverTheBarIsReferredTo) {
  RecordProperty("quirk", "short-bar-switches-the-refresh-on");
  BarRig rig;
  rig.press(frmRecords->Toolbar1, RecordsForm::button_refresh);
  EXPECT_FALSE(frmRecords->Timer1.Enabled());
  rig.happen([] { static_cast<void>(*Form1); });
  EXPECT_TRUE(frmRecords->Timer1.Enabled());
  EXPECT_EQ(frmRecords->Toolbar1.Buttons(1).Value(), 1);
  EXPECT_FALSE(Form1->IsShown());
}

TEST(ShortBarLoad, LeavesTheSwitchAloneWithoutAnArea) {
  BarRig rig;
  conffrm->Combo2.Text = "";
  ShortBarForm &bar = rig.open_short_bar();
  EXPECT_EQ(bar.Check2.Value(), 0);
  EXPECT_FALSE(bar.Timer1.Enabled());
  EXPECT_EQ(Captions(bar.Label1), (Lines{"", "", ""}));
  EXPECT_EQ(Module1->BarMode, face_short_bar);
}

// The switch.

TEST(ShortBarSwitch, IsTheRefreshSwitchOfTheWindow) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  bar.Label1(0).Caption = "";
  rig.tick_off(bar.Check2, 0);
  EXPECT_EQ(bar.Label1(0).Caption(), "Mag: 2.0");
  EXPECT_FALSE(bar.Timer1.Enabled());
  EXPECT_FALSE(frmRecords->Timer1.Enabled());
  EXPECT_FALSE(bar.Label5.Enabled());
  EXPECT_EQ(frmRecords->Toolbar1.Buttons(1).Value(), 0);
  EXPECT_EQ(frmRecords->StatusBar1.Panels(3).Text(), "Auto Refresh Off");

  rig.tick_off(bar.Check2, 1);
  EXPECT_TRUE(bar.Timer1.Enabled());
  EXPECT_TRUE(frmRecords->Timer1.Enabled());
  EXPECT_TRUE(bar.Label5.Enabled());
  EXPECT_EQ(frmRecords->Toolbar1.Buttons(1).Value(), 1);
  EXPECT_EQ(frmRecords->StatusBar1.Panels(3).Text(), "Auto Refresh On");

  rig.tick_off(bar.Check2, 2);
  EXPECT_TRUE(bar.Timer1.Enabled());
  EXPECT_EQ(frmRecords->Toolbar1.Buttons(1).Value(), 2);
  EXPECT_EQ(frmRecords->StatusBar1.Panels(3).Text(), "Auto Refresh Off");
}

TEST(ShortBarSwitch, DoesNotFollowTheSwitchOfTheWindow) {
  RecordProperty("quirk", "short-bar-switch-does-not-follow");
  BarRig rig;
  rig.click(rig.open_short_bar().mnuRecords);
  rig.press(frmRecords->Toolbar1, RecordsForm::button_refresh);
  ASSERT_EQ(frmRecords->Toolbar1.Buttons(1).Value(), 0);

  const ShortBarForm &bar = rig.open_short_bar();
  EXPECT_EQ(bar.Check2.Value(), 1);
  EXPECT_TRUE(bar.Label5.Enabled());
  EXPECT_FALSE(bar.Timer1.Enabled());
  EXPECT_FALSE(frmRecords->Timer1.Enabled());
}

// The timer.

TEST(ShortBarTimer, RepaintsTheBarAtEachTick) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  frmRecords->ListView2.ListItems.SetText(1, "6");
  rig.tick(bar.Timer1);
  EXPECT_EQ(bar.Label1(0).Caption(), "Mag: 6");
  EXPECT_EQ(bar.IdleTicks, 1);
}

TEST(ShortBarTimer, CollapsesTheBarAtEachHundredthTick) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.move_mouse_over(bar.Picture1, 0, 0);
  rig.tick(bar.Timer1, 99);
  EXPECT_TRUE(bar.Check1.Visible());
  EXPECT_EQ(bar.Width(), 7935);
  rig.tick(bar.Timer1);
  EXPECT_FALSE(bar.Check1.Visible());
  EXPECT_FALSE(bar.Check2.Visible());
  EXPECT_EQ(bar.Width(), 7215 + 150);
  EXPECT_EQ(bar.Picture1.BackColor(), 0U);
  EXPECT_EQ(bar.IdleTicks, 0);
  rig.move_mouse_over(bar.Picture1, 0, 0);
  rig.tick(bar.Timer1, 100);
  EXPECT_FALSE(bar.Check1.Visible());
}

TEST(ShortBarTimer, CollapsesTheBarUnderThePointer) {
  RecordProperty("quirk", "short-bar-collapses-under-the-pointer");
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.tick(bar.Timer1, 99);
  rig.move_mouse_over(bar.Picture1, 0, 0);
  rig.tick(bar.Timer1);
  EXPECT_FALSE(bar.Check1.Visible());
}

TEST(ShortBarTimer, ReadsAHalfBuiltListWhileAScanLetsEventsRun) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  conffrm->Text1.Text = "3";
  rig.serve(los_angeles, Page(Row("6.5") + Row("1.1")));
  rig.random().Add(1.5 / 600);  // one step of the alert's shaking
  rig.screen().on_load = [&](FormBase & /*popup*/) {
    constexpr int first_step = 2;
    rig.during_pump(first_step, [&] {
      const int rows = frmRecords->ListView1.ListItems.Count();
      rig.tick(bar.Timer1);
      rig.note("ticked with " + IntegerText(rows) + ": " + bar.Label1(0).Caption());
    });
  };
  rig.refresh();
  EXPECT_EQ(rig.trace({"ticked"}), Lines{"ticked with 1: Mag: 6.5"});
  EXPECT_EQ(frmRecords->ListView1.ListItems.Count(), 2);
  EXPECT_EQ(rig.end_status(), std::nullopt);
}

TEST(ShortBarTimer, CountsFromZeroAfterTheMenu) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.tick(bar.Timer1, 99);
  rig.tick_off(bar.Check1, 1);
  rig.tick(bar.Timer1, 99);
  EXPECT_TRUE(bar.Check1.Visible());
  rig.tick(bar.Timer1);
  EXPECT_FALSE(bar.Check1.Visible());
}

// The pointer.

TEST(ShortBarHover, OpensTheBar) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.tick(bar.Timer1, 100);
  bar.Label1(0).ForeColor = 0;
  rig.move_mouse_over(bar.Picture1, 10, 219);
  EXPECT_TRUE(bar.Check1.Visible());
  EXPECT_TRUE(bar.Check2.Visible());
  EXPECT_EQ(bar.Width(), 7620 + 255 + 60);
  EXPECT_EQ(bar.BackColor(), 0x80000002U);
  EXPECT_EQ(bar.Picture1.BackColor(), 0xF55A00U);
  EXPECT_EQ(bar.Label1(0).ForeColor(), 0x80000013U);
}

TEST(ShortBarHover, AndTheCollapseFollowTheWidthThatKeysHaveGiven) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.key(bar, 'S');
  rig.key(bar, 'S');
  rig.tick(bar.Timer1, 100);
  EXPECT_EQ(bar.Width(), 7115 + 150);
  rig.move_mouse_over(bar.Picture1, 10, 0);
  EXPECT_EQ(bar.Width(), 7520 + 255 + 60);
}

TEST(ShortBarHover, OpensABarThatKeysHaveChangedWhileItWasCollapsed) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.tick(bar.Timer1, 100);
  rig.key(bar, 'E');
  EXPECT_EQ(bar.Width(), 7365 + 50);
  EXPECT_EQ(bar.Picture1.Width(), 7265);
  EXPECT_EQ(bar.Check1.Left(), 7415);
  EXPECT_FALSE(bar.Check1.Visible());
  rig.move_mouse_over(bar.Picture1, 10, 0);
  EXPECT_EQ(bar.Width(), 7670 + 255 + 60);

  rig.tick(bar.Timer1, 100);
  rig.key(bar, 'S');
  rig.key(bar, 'S');
  EXPECT_EQ(bar.Width(), 7165 + 150);
  rig.move_mouse_over(bar.Picture1, 10, 0);
  EXPECT_EQ(bar.Width(), 7570 + 255 + 60);
}

TEST(ShortBarHover, DoesNothingOverTheLowerPart) {
  RecordProperty("quirk", "short-bar-opens-over-its-upper-part");
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.tick(bar.Timer1, 100);
  const Color background = bar.BackColor();
  for (const float y : {220.0F, 349.0F}) {
    rig.move_mouse_over(bar.Picture1, 10, y);
    EXPECT_FALSE(bar.Check1.Visible());
    EXPECT_EQ(bar.Width(), 7365);
    EXPECT_EQ(bar.BackColor(), background);
    EXPECT_EQ(bar.Picture1.BackColor(), 0U);
  }
  rig.move_mouse_over(bar.Picture1, 10, 219.5F);
  EXPECT_TRUE(bar.Check1.Visible());
}

TEST(ShortBarHover, LeavesTheFirstLabelsColorWhileTagsAreColored) {
  for (const int colorize : {1, 2}) {
    BarRig rig;
    ShortBarForm &bar = rig.open_short_bar();
    conffrm->Check3.Value = colorize;
    bar.Label1(0).ForeColor = 5;
    rig.move_mouse_over(bar.Picture1, 10, 0);
    EXPECT_EQ(bar.Label1(0).ForeColor(), 5U);
  }
}

TEST(ShortBarHover, ChangesTheBackgroundForGood) {
  RecordProperty("quirk", "short-bar-keeps-its-open-background");
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  EXPECT_EQ(bar.BackColor(), color_button_face);
  rig.move_mouse_over(bar.Picture1, 10, 0);
  rig.tick(bar.Timer1, 100);
  EXPECT_EQ(bar.BackColor(), 0x80000002U);
}

TEST(ShortBarLabels, ShowTheHeadlineUnderThePointerWhileTheSnapshotIsOn) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  frmRecords->Label3.Caption = "Mag: 5.8";
  rig.move_mouse_over(bar.Label1(1), 10, 0);
  EXPECT_EQ(bar.Label1(1).ToolTipText(), "World: Mag: 5.8");
  EXPECT_EQ(bar.Label1(0).ToolTipText(), "Latest Event/ Click to expand");
  for (const int value : {0, 2}) {
    conffrm->Check5.Value = value;
    rig.move_mouse_over(bar.Label1(0), 10, 0);
    EXPECT_EQ(bar.Label1(0).ToolTipText(), "Latest Event/ Click to expand");
  }
}

TEST(ShortBarLabels, KeepTheMoveOverThem) {
  RecordProperty("quirk", "short-bar-texts-keep-the-move");
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.tick(bar.Timer1, 100);
  for (int i = 0; i < 3; ++i) {
    rig.move_mouse_over(bar.Label1(i), 10, 100);
    EXPECT_FALSE(bar.Check1.Visible()) << i;
    EXPECT_EQ(bar.Picture1.BackColor(), 0U) << i;
  }
}

TEST(ShortBarLabels, OpenThePageOfTheSelectedEvent) {
  RecordProperty("quirk", "hover-text-promises-to-expand");
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  for (int i = 0; i < 3; ++i) {
    rig.clear_trace();
    EXPECT_EQ(bar.Label1(i).ToolTipText(), "Latest Event/ Click to expand");
    rig.click(bar.Label1(i));
    EXPECT_EQ(rig.trace(), Lines{"open " + southern + "/recenteqs/Quakes/ci37868143.html for Form1"});
    EXPECT_FALSE(frmRecords->IsShown());
  }
}

TEST(ShortBarLabels, OutOfSightStillAct) {
  BarRig rig;
  ShortBarForm &bar = rig.open_short_bar();
  rig.release_mouse_on(bar.Label2, 1);
  rig.release_mouse_on(bar.Label4, 1);
  rig.release_mouse_on(bar.Label4, 4);
  EXPECT_EQ(rig.trace(), (Lines{"open http://maker.localhost:17650/ for Form1", "popup Tmnu of Form1"}));

  rig.clear_trace();
  rig.release_mouse_on(bar.Label4, 2);
  EXPECT_EQ(rig.trace(), Lines{"show conffrm"});
  EXPECT_EQ(bar.Label4.ForeColor(), 255U);
  EXPECT_TRUE(conffrm->Timer1.Enabled());
  rig.release_mouse_on(bar.Label4, 2);
  EXPECT_EQ(rig.trace(), (Lines{"show conffrm", "hide conffrm"}));
  EXPECT_EQ(bar.Label4.ForeColor(), 0xFFFFFFU);
}

}  // namespace
}  // namespace borvane
