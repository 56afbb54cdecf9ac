#pragma once

#include "controls/buttons.h"
#include "controls/control_array.h"
#include "controls/form.h"
#include "controls/form_set.h"
#include "controls/label.h"
#include "controls/menu.h"
#include "controls/pictures.h"
#include "controls/timer.h"

namespace borvane {

/// The long bar: the newest and the strongest event in one line across the top of the screen.
struct LongBarForm : FormBase {
  static constexpr Label::Design LastLabel(float left) {
    return {.Caption = "Label1",
            .Left = left,
            .Top = 75,
            .FontName = "Arial",
            .FontSize = 8.25F,
            .ForeColor = Rgb(255, 255, 255),
            .AutoSize = true};
  }
  static constexpr Label::Design StrongestLabel(float left) {
    return {.Caption = "Label2",
            .Left = left,
            .Top = 75,
            .FontName = "Arial",
            .FontSize = 8.25F,
            .ForeColor = Rgb(224, 224, 224),
            .Alignment = Alignment::Right,
            .AutoSize = true};
  }

  LongBarForm();

  PictureBox Picture1{*this, "Picture1", {.BackColor = 0, .Left = 80, .Top = 0, .Width = 8900, .Height = 360}};
  ControlArray<Label, 3> Label1{Picture1, "Label1", {LastLabel(60), LastLabel(860), LastLabel(1660)}};
  ControlArray<Label, 3> Label2{Picture1, "Label2", {StrongestLabel(4860), StrongestLabel(5660), StrongestLabel(6460)}};
  CheckBox Check1{
      *this,
      "Check1",
      {.Left = 8630, .Top = 60, .Width = 270, .Height = 240, .BackColor = Rgb(128, 0, 128), .SpokenName = "Menu"}};
  TimerControl Timer1{*this, "Timer1", {.Interval = 1000, .Enabled = false}};

  Menu Tmnu{*this, "Tmnu", {.Caption = "Menu"}};
  MenuItem mnuRefresh{Tmnu, "mnuRefresh", {.Caption = "Refresh"}};
  MenuItem mnuRecentWW{Tmnu, "mnuRecentWW", {.Caption = "More Info"}};
  MenuItem mnuStrong{Tmnu, "mnuStrong", {.Caption = "Strong Motion Maps"}};
  MenuItem sep1{Tmnu, "sep1", {.Caption = "-"}};
  MenuItem mnuRecrs{Tmnu, "mnuRecrs", {.Caption = "Expand"}};
  MenuItem mnuSettings{Tmnu, "mnuSettings", {.Caption = "Settings"}};
  MenuItem sep2{Tmnu, "sep2", {.Caption = "-"}};
  MenuItem mnuTop{Tmnu, "mnuTop", {.Caption = "On Top"}};
  MenuItem mnuabout{Tmnu, "mnuabout", {.Caption = "About"}};
  MenuItem mnuQuit{Tmnu, "mnuQuit", {.Caption = "Exit"}};

  Integer IdleTicks;  // ticks of Timer1 since the last update by it
  Integer EdgeTicks;  // 0 while the bar is in its place; counts from 1 while it is out of the way

  void Form_Load() override;
  void Form_KeyUp(Integer key_code, Integer shift) override;
  void Picture1_MouseMove(const MouseState &mouse);
  void Label1_Click();
  void Label2_MouseMove(int i, const MouseState &mouse);
  void Check1_Click();
  void Check1_MouseMove();
  void Check1_MouseUp(const MouseState &mouse);
  void Timer1_Timer();
  static void mnuRefresh_Click();
  void mnuRecentWW_Click();
  void mnuStrong_Click();
  void mnuRecrs_Click();
  void mnuSettings_Click();
  void mnuTop_Click();
  static void mnuabout_Click();
  static void mnuQuit_Click();

  /// Keeps the bar above the windows of other programs if "On Top" is ticked.
  void ApplyOnTop();

 private:
  void WireMenu();
  void ShowTopInSettings();
  void OpenMenu();
};

inline constexpr Form<LongBarForm> newTagFrm;

}  // namespace borvane
