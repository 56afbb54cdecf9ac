#include "bars/newTagFrm.h"

#include "bars/bar_actions.h"
#include "bars/bar_content.h"
#include "bars/bar_place.h"
#include "bars/paint_bar.h"
#include "basic/number.h"
#include "core/program.h"
#include "core/start.h"
#include "feed/hosts.h"
#include "info/Aboutfrm.h"
#include "settings/conffrm.h"

namespace borvane {

LongBarForm::LongBarForm()
    : FormBase({.Name = "newTagFrm",
                .Caption = "Form2",
                .ClientWidth = 9000,
                .ClientHeight = 360,
                .Border = BorderStyle::None,
                .SpokenName = "Borvane Long Bar"}) {
  Picture1.MouseMove = [this](const MouseState &mouse) { Picture1_MouseMove(mouse); };
  for (int i = 0; i < Label1.Count(); ++i) {
    // Meant (newest-events-labels-pass-no-move-on): a move over these labels should count as one over the box. They let
    // none through, whereas those of the strongest event do, which are at the end where the pointer matters.
    Label1(i).Click = [this] { Label1_Click(); };
    Label2(i).MouseMove = [this, i](const MouseState &mouse) { Label2_MouseMove(i, mouse); };
  }
  Check1.Click = [this] { Check1_Click(); };
  Check1.MouseMove = [this](const MouseState &) { Check1_MouseMove(); };
  Check1.MouseUp = [this](const MouseState &mouse) { Check1_MouseUp(mouse); };
  Timer1.Timer = [this] { Timer1_Timer(); };
  WireMenu();
}

void LongBarForm::WireMenu() {
  mnuRefresh.Click = [] { mnuRefresh_Click(); };
  mnuRecentWW.Click = [this] { mnuRecentWW_Click(); };
  mnuStrong.Click = [this] { mnuStrong_Click(); };
  mnuRecrs.Click = [this] { mnuRecrs_Click(); };
  mnuSettings.Click = [this] { mnuSettings_Click(); };
  mnuTop.Click = [this] { mnuTop_Click(); };
  mnuabout.Click = [] { mnuabout_Click(); };
  mnuQuit.Click = [] { mnuQuit_Click(); };
}

void LongBarForm::Form_Load() {
  PlaceLongBar();
  ApplyOnTop();

  // Meant (long-bar-ignores-its-stored-place): the place that has just been restored should stay. Each load puts the
  // bar across the top of the screen.
  Left = 0;
  Width = current->host().FirstScreen().width;
  Top = 0;

  Picture1.Left = 80;
  Picture1.Width = ScaleWidth() - 100;
  Check1.Left = Picture1.ScaleWidth() - Check1.Width();

  Module1->BarMode = face_long_bar;
  UpdateLongBar();
  Check1.Value = 1;
}

void LongBarForm::Form_KeyUp(Integer key_code, Integer shift) {
  if (IsMenuKey(key_code, shift)) {
    OpenMenu();
  } else if (ChangeWidthByKey(*this, Picture1, {&Check1}, key_code)) {
    PaintBar();
  } else if (key_code == 'H') {
    // Meant (h-may-hide-for-good): the key should start the timer that brings the bar back. Unless the pointer has
    // started it, the bar stays hidden.
    EdgeTicks = 1;
    Hide();
  } else {
    MoveByKey(*this, key_code);
  }
  KeepPlace(*this, {.top = Setting::longTop, .left = Setting::longLeft, .width = Setting::longWidth});
}

void LongBarForm::Picture1_MouseMove(const MouseState &mouse) {
  constexpr float hot_zone = 1600;
  const float edge = Width() - hot_zone;
  if (edge > mouse.x)
    return;

  if (conffrm->Option1(0).Value()) {
    EdgeTicks = 1;
    // Meant (bar-place-beyond-its-range-ends-the-program): here for the offset.
    Left = -SinglePrefix(conffrm->Text7.Text());
  }
  if (conffrm->Option1(1).Value()) {
    EdgeTicks = 1;
    Hide();
  }
  // Meant (ignore-keeps-the-timer-running): a bar that does not move should need no timer. It runs on from the first
  // touch, and that alone makes the bar's text follow the list.
  Timer1.Enabled = true;
}

void LongBarForm::Label1_Click() { OpenSelectedEvent(*this); }

void LongBarForm::Label2_MouseMove(int i, const MouseState &mouse) {
  ShowHeadline(Label2(i));
  Picture1_MouseMove(mouse);
}

void LongBarForm::Check1_Click() {
  // Meant (menu-handle-stays-ticked): a click should clear a ticked box. This one is the handle of the menu and is
  // always ticked.
  Check1.Value = 1;
}

void LongBarForm::Check1_MouseMove() { Check1.ToolTipText = Check1.Value() == 1 ? "ON" : "OFF"; }

void LongBarForm::Check1_MouseUp(const MouseState &mouse) {
  if (mouse.button == right_button)
    OpenMenu();
}

void LongBarForm::OpenMenu() {
  ShowTopInSettings();
  PopupMenu(Tmnu);
}

void LongBarForm::ShowTopInSettings() { conffrm->Text3.Text = SingleText(Top(), platform().region.DecimalSeparator()); }

void LongBarForm::Timer1_Timer() {
  constexpr int ticks_away = 5;
  constexpr int ticks_between_updates = 600;

  if (EdgeTicks > 0)
    EdgeTicks = EdgeTicks + 1;
  if (EdgeTicks >= ticks_away) {
    // Meant (long-bar-comes-back-at-the-left): the bar should come back where it was. It comes back at the left edge,
    // wherever the keys had put it.
    Left = 0;
    ShowWithoutFocus();
    EdgeTicks = 0;
    Timer1.Enabled = false;
  }

  // Meant (long-bar-does-not-follow-the-refresh): the bar should be updated with each refresh. It is updated at its
  // load and then whenever its timer, which mostly rests, has ticked 600 times.
  IdleTicks = IdleTicks + 1;
  if (IdleTicks == ticks_between_updates) {
    IdleTicks = 0;
    UpdateLongBar();
  }
}

void LongBarForm::mnuRefresh_Click() {
  // Meant (unreachable-threshold-ends-the-program): here at 32769 and beyond.
  Module1->RefreshCount = RoundToInteger(NumericPrefix(conffrm->Text2.Text()) - 1);
}

void LongBarForm::mnuRecentWW_Click() {
  // Meant (long-bar-opens-the-world-list): "More Info" should open the page of the newest event, as it does on the
  // short bar. Here it opens the list of the world.
  OpenLink(*this, AddressOf(BrowserEndpoint::WorldList, "/recenteqsww/"));
}

void LongBarForm::mnuStrong_Click() { OpenStrongMotionMaps(*this); }

void LongBarForm::mnuRecrs_Click() {
  ReturnToRecords(Timer1);
  current->Unload(*this);
}

void LongBarForm::mnuSettings_Click() {
  Check1.Value = 1;
  ShowSettings();
  ShowTopInSettings();
}

void LongBarForm::mnuTop_Click() {
  mnuTop.Checked = !mnuTop.Checked();
  ApplyOnTop();
  StoreOnTop(mnuTop);
}

void LongBarForm::mnuabout_Click() { Aboutfrm->Show(); }

void LongBarForm::mnuQuit_Click() { QuitProgram(); }

void LongBarForm::ApplyOnTop() { KeepOnTop(mnuTop.Checked()); }

}  // namespace borvane
