#include "alert/frmQalert.h"

#include <gtest/gtest.h>

#include "support/program/alert_rig.h"
#include "support/program/pages.h"

namespace borvane {
namespace {

TEST(QuakeAlertForm, HasItsDesign) {
  AlertRig rig;
  QuakeAlertForm &form = *frmQalert;
  EXPECT_EQ(form.name(), "frmQalert");
  EXPECT_EQ(form.Caption(), " Quake Alert");
  EXPECT_EQ(form.ScaleWidth(), 1710);
  EXPECT_EQ(form.ScaleHeight(), 780);
  EXPECT_EQ(form.border(), BorderStyle::FixedDialog);
  EXPECT_EQ(form.MousePointer(), pointer_custom);
  EXPECT_FALSE(form.takes_focus());

  EXPECT_EQ(form.Label1.Left(), 60);
  EXPECT_EQ(form.Label1.Top(), 120);
  EXPECT_EQ(form.Label1.Width(), 1590);
  EXPECT_EQ(form.Label1.Height(), 450);
  EXPECT_EQ(form.Label1.alignment(), Alignment::Center);
  EXPECT_TRUE(form.Label1.word_wrap());
  EXPECT_TRUE(form.Label1.Bold());
  EXPECT_EQ(form.Label1.FontName(), "MS Sans Serif");
  EXPECT_EQ(form.Label1.FontSize(), 18);
  EXPECT_EQ(form.Label1.ForeColor(), 0x8000000E);
  EXPECT_EQ(form.Label1.back_color(), std::nullopt);
  EXPECT_EQ(form.Label1.Caption(), "") << "until the first alert";

  EXPECT_EQ(form.Label2.Left(), 0);
  EXPECT_EQ(form.Label2.Top(), 495);
  EXPECT_EQ(form.Label2.Width(), 1695);
  EXPECT_EQ(form.Label2.Height(), 225);
  EXPECT_EQ(form.Label2.alignment(), Alignment::Center);
  EXPECT_EQ(form.Label2.ForeColor(), 0x00FFFFU);
  EXPECT_EQ(form.Label2.back_color(), std::nullopt);
  EXPECT_EQ(form.Label2.Caption(), "");

  EXPECT_EQ(form.Timer1.Interval(), 100);
  EXPECT_FALSE(form.Timer1.Enabled());
}

TEST(QuakeAlertForm, IsInTheMiddleOfTheFirstScreenAndAboveOtherWindowsFromItsLoad) {
  AlertRig rig;
  EXPECT_EQ(frmQalert->Left(), (1280 * 15 - 1710 - 120) / 2.0F);
  EXPECT_EQ(frmQalert->Top(), (1024 * 15 - 780 - 405) / 2.0F);
  EXPECT_EQ(rig.trace(), (Lines{"load frmQalert", "topmost frmQalert"}));
}

/// The tones that follow a tick of the timer while the settings' box has that value.
std::size_t TonesWithSoundAt(int value) {
  AlertRig rig;
  conffrm->Text5(1).Text = "1";
  conffrm->Check2.Value = value;
  frmQalert->Timer1.Enabled = true;
  rig.tick(frmQalert->Timer1, 3);
  EXPECT_FALSE(frmQalert->Timer1.Enabled());
  return rig.trace({"beep"}).size();
}

TEST(QuakeAlertForm, SoundsTheAlarmOnceIfSoundIsEnabled) {
  EXPECT_EQ(TonesWithSoundAt(1), 91U);
  EXPECT_EQ(TonesWithSoundAt(0), 0U);
  EXPECT_EQ(TonesWithSoundAt(2), 0U);
}

TEST(QuakeAlertForm, StopsItsTimerBeforeTheAlarm) {
  AlertRig rig;
  conffrm->Check2.Value = 1;
  frmQalert->Timer1.Enabled = true;
  rig.watch(frmQalert->Timer1, frmQalert->Timer1.Enabled, "Timer1");
  rig.tick(frmQalert->Timer1);
  EXPECT_EQ(rig.trace({"set", "beep"}).at(0), "set Timer1=false");
}

TEST(QuakeAlertForm, SurvivesItsCloseDuringTheAlarm) {
  AlertRig rig;
  conffrm->Check2.Value = 1;
  conffrm->Text5(1).Text = "1";
  frmQalert->Timer1.Enabled = true;
  rig.during_next_pump([] { current->Unload(*frmQalert, UnloadMode::CloseBox); });
  rig.tick(frmQalert->Timer1);
  EXPECT_EQ(rig.trace({"beep"}).size(), 91U);
  EXPECT_EQ(frmQalert.IfLoaded(), nullptr);
}

TEST(QuakeAlertForm, OpensThePageOfTheChosenAreaAndStaysOpen) {
  RecordProperty("quirk", "popup-opens-the-areas-page");
  AlertRig rig;
  conffrm->Combo2.Text = "Los Angeles";
  Module1->SiteRoot = southern + "/";
  rig.check(AlertRig::strong());
  rig.clear_trace();
  rig.click(frmQalert->Label1);
  EXPECT_EQ(rig.trace({"open", "hide", "request"}), Lines{"open " + los_angeles + " for frmQalert"});
  EXPECT_EQ(Module1->SiteRoot, los_angeles) << "the whole address is left in the shared one";
  EXPECT_TRUE(frmQalert->IsShown());
}

TEST(QuakeAlertForm, ClosesByItsCloseBox) {
  AlertRig rig;
  rig.check(AlertRig::strong());
  rig.clear_trace();
  rig.happen([] { current->Unload(*frmQalert, UnloadMode::CloseBox); });
  EXPECT_EQ(rig.trace(), (Lines{"hide frmQalert", "unload frmQalert"}));
}

}  // namespace
}  // namespace borvane
