#include "bars/Form1.h"

#include "alert/alert_time.h"
#include "bars/bar_actions.h"
#include "bars/bar_content.h"
#include "bars/bar_place.h"
#include "core/program.h"
#include "core/start.h"
#include "feed/hosts.h"
#include "info/Aboutfrm.h"
#include "records/frmRecords.h"
#include "records/links.h"
#include "settings/conffrm.h"

namespace borvane {

namespace {

constexpr Color red = Rgb(255, 0, 0);
constexpr Color white = Rgb(255, 255, 255);
constexpr Color black = 0;
constexpr Color blue = Rgb(0, 90, 245);

}  // namespace

ShortBarForm::ShortBarForm()
    : FormBase({.Name = "Form1",
                .Caption = "Borvane",
                .ClientWidth = 7935,
                .ClientHeight = 435,
                .Border = BorderStyle::None,
                .SpokenName = "Borvane Short Bar"}) {
  // Meant (labels-below-the-short-bar): these two should be where they can be seen. They are below the edge of the bar,
  // which has no room for them; the check box opens the same menu, and W leads to the same site.
  Label2.Caption = AddressOf(Endpoint::Maker, "/");
  Label2.MouseUp = [this](const MouseState &) { Label2_MouseUp(); };
  Label4.MouseUp = [this](const MouseState &mouse) { Label4_MouseUp(mouse); };

  Picture1.MouseMove = [this](const MouseState &mouse) { Picture1_MouseMove(mouse); };
  for (int i = 0; i < Label1.Count(); ++i) {
    Label1(i).Click = [this] { Label1_Click(); };
    Label1(i).MouseMove = [this, i](const MouseState &) { Label1_MouseMove(i); };
  }
  Check1.Click = [this] { Check1_Click(); };
  Check2.Click = [this] { Check2_Click(); };
  Timer1.Timer = [this] { Timer1_Timer(); };
  mnuSetings.Click = [this] { mnuSetings_Click(); };
  mnuRecords.Click = [this] { mnuRecords_Click(); };
  mnuRecentWW.Click = [this] { mnuRecentWW_Click(); };
  mnuStrong.Click = [this] { mnuStrong_Click(); };
  mnuTop.Click = [this] { mnuTop_Click(); };
  mnuAbout.Click = [] { mnuAbout_Click(); };
  mnuQuit.Click = [] { mnuQuit_Click(); };
}

void ShortBarForm::Form_Load() {
  PlaceShortBar();
  ApplyOnTop();

  // Meant (short-bar-switches-the-refresh-on): the bar should take the state of the refresh as it is. Its load switches
  // the refresh on whenever an area is chosen, also where the load is only a reference to the bar.
  if (!conffrm->Combo2.Text().empty())
    Check2.Value = 1;

  Module1->LastAlertTime = FirstAlertTime(platform().clock.Now());
  Module1->BarMode = face_short_bar;
}

void ShortBarForm::Form_KeyUp(Integer key_code, Integer shift) {
  if (IsMenuKey(key_code, shift))
    OpenMenu();
  else if (ChangeWidthByKey(*this, Picture1, {&Check1, &Check2, &Label5}, key_code))
    UpdateShortBar();
  else
    MoveByKey(*this, key_code);
  KeepPlace(*this, {.top = Setting::shortTop, .left = Setting::shortLeft, .width = Setting::shortWidth});
}

void ShortBarForm::Picture1_MouseMove(const MouseState &mouse) {
  // Meant (short-bar-opens-over-its-upper-part): the whole box should open the bar. The lowest part of it does not.
  constexpr float lower_part = 220;
  constexpr float right_margin = 60;
  if (mouse.y >= lower_part)
    return;

  Check1.Visible = true;
  Check2.Visible = true;
  Width = Label5.Left() + Label5.Width() + right_margin;
  // Meant (short-bar-keeps-its-open-background): the collapse should take the background back, too. It takes back that
  // of the box with the labels alone.
  BackColor = color_active_caption;
  Picture1.BackColor = blue;
  if (conffrm->Check3.Value() == 0)
    Label1(0).ForeColor = color_inactive_caption_text;
}

void ShortBarForm::Label1_Click() { OpenSelectedEvent(*this); }

void ShortBarForm::Label1_MouseMove(int i) {
  // Meant (short-bar-texts-keep-the-move): a move over a text should open the bar like one over its box. The texts
  // keep it, and above them the box is a few pixels high.
  ShowHeadline(Label1(i));
}

void ShortBarForm::Check1_Click() {
  if (Check1.Value() == 1)
    OpenMenu();
  Check1.Value = 0;
}

void ShortBarForm::OpenMenu() {
  IdleTicks = 0;
  PopupMenu(Tmnu);
}

void ShortBarForm::Check2_Click() {
  UpdateShortBar();

  // Meant (short-bar-switch-does-not-follow): the window's switch should set this one as this one sets it. It leaves
  // the bar alone, so that a bar which is loaded already may say "ON" while nothing is refreshed.
  const bool on = Check2.Value() != 0;
  Timer1.Enabled = on;
  frmRecords->Timer1.Enabled = on;
  Label5.Enabled = on;
  frmRecords->Toolbar1.Buttons(RecordsForm::button_refresh).Value = Check2.Value();
  frmRecords->StatusBar1.Panels(3).Text = Check2.Value() == 1 ? "Auto Refresh On" : "Auto Refresh Off";
}

void ShortBarForm::Label4_MouseUp(const MouseState &mouse) {
  if (mouse.button == left_button) {
    PopupMenu(Tmnu);
  } else if (mouse.button == right_button) {
    if (Label4.ForeColor() != red) {
      mnuSetings_Click();
    } else {
      conffrm->Hide();
      Label4.ForeColor = white;
    }
  }
}

void ShortBarForm::Label2_MouseUp() { platform().shell.Open(Label2.Caption(), this); }

void ShortBarForm::Timer1_Timer() {
  constexpr int ticks_to_collapse = 100;
  constexpr float margins = 150;

  // Meant (short-bar-collapses-under-the-pointer): the count should begin again when the pointer is on the bar. Only a
  // collapse and the menu restart it.
  IdleTicks = IdleTicks + 1;
  if (IdleTicks == ticks_to_collapse) {
    IdleTicks = 0;
    Check1.Visible = false;
    Check2.Visible = false;
    Width = Picture1.Width() + margins;
    Picture1.BackColor = black;
  }

  UpdateShortBar();
}

void ShortBarForm::mnuSetings_Click() {
  Label4.ForeColor = red;
  ShowSettings();
}

void ShortBarForm::mnuRecords_Click() {
  // Meant (short-bar-returns-stopped): the bar should tick again at its next show. It stays loaded, so that no Load
  // runs then, and its timer waits for a click on the switch.
  ReturnToRecords(Timer1);
  Hide();
}

void ShortBarForm::mnuRecentWW_Click() { OpenLink(*this, GetLastEventUrl()); }

void ShortBarForm::mnuStrong_Click() { OpenStrongMotionMaps(*this); }

void ShortBarForm::mnuTop_Click() {
  // Meant (short-bar-on-top-waits): the order of the windows should follow the tick at once, as it does on the long
  // bar. It follows at the next load.
  mnuTop.Checked = !mnuTop.Checked();
  StoreOnTop(mnuTop);
}

void ShortBarForm::mnuAbout_Click() { Aboutfrm->Show(); }

void ShortBarForm::mnuQuit_Click() { QuitProgram(); }

void ShortBarForm::ApplyOnTop() { KeepOnTop(mnuTop.Checked()); }

}  // namespace borvane
