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

/// The short bar: the newest event in one line, with a switch for the auto refresh.
struct ShortBarForm : FormBase {
  // Meant (hover-text-promises-to-expand): the text should say what a click does. It opens the page of an event; the
  // menu's "Expand" leads back to the window.
  static constexpr Label::Design event_label = {.Top = 75,
                                                .ToolTipText = "Latest Event/ Click to expand",
                                                .ForeColor = color_inactive_caption_text,
                                                .AutoSize = true};

  ShortBarForm();

  PictureBox Picture1{*this, "Picture1", {.BackColor = 0, .Left = 75, .Top = 45, .Width = 7215, .Height = 350}};
  ControlArray<Label, 3> Label1{Picture1, "Label1", {event_label, event_label, event_label}};
  CheckBox Check1{*this,
                  "Check1",
                  {.Left = 7365, .Top = 10, .Width = 225, .Height = 195, .ToolTipText = "Menu", .SpokenName = "Menu"}};
  CheckBox Check2{
      *this,
      "Check2",
      {.Left = 7365, .Top = 225, .Width = 225, .Height = 195, .ToolTipText = "ON/OFF", .SpokenName = "Auto Refresh"}};
  Label Label5{*this,
               "Label5",
               {.Caption = "ON",
                .Left = 7620,
                .Top = 165,
                .Width = 255,
                .Height = 225,
                .Enabled = false,
                .FontName = "Arial",
                .FontSize = 9,
                .Bold = true}};

  // Below the client area.
  Label Label4{*this,
               "Label4",
               {.Caption = "Menu",
                .Left = 6705,
                .Top = 525,
                .Width = 615,
                .Height = 255,
                .ForeColor = Rgb(255, 255, 255),
                .BackColor = Rgb(0, 128, 0)}};
  Label Label2{*this, "Label2", {.Left = 240, .Top = 855, .Width = 3000, .Height = 195}};

  TimerControl Timer1{*this, "Timer1", {.Interval = 1000, .Enabled = false}};

  Menu Tmnu{*this, "Tmnu", {.Caption = "Menu"}};
  MenuItem mnuSetings{Tmnu, "mnuSetings", {.Caption = "Settings"}};
  MenuItem mnuRecords{Tmnu, "mnuRecords", {.Caption = "Expand"}};
  MenuItem sep1{Tmnu, "sep1", {.Caption = "-"}};
  MenuItem mnuRecentWW{Tmnu, "mnuRecentWW", {.Caption = "More Info"}};
  MenuItem mnuStrong{Tmnu, "mnuStrong", {.Caption = "Strong Motion Maps"}};
  MenuItem sep2{Tmnu, "sep2", {.Caption = "-"}};
  MenuItem mnuTop{Tmnu, "mnuTop", {.Caption = "On Top"}};
  MenuItem mnuAbout{Tmnu, "mnuAbout", {.Caption = "About"}};
  MenuItem mnuQuit{Tmnu, "mnuQuit", {.Caption = "Exit"}};

  Integer IdleTicks;  // ticks of Timer1 since the last collapse or opening of the menu

  void Form_Load() override;
  void Form_KeyUp(Integer key_code, Integer shift) override;
  void Picture1_MouseMove(const MouseState &mouse);
  void Label1_Click();
  void Label1_MouseMove(int i);
  void Check1_Click();
  void Check2_Click();
  void Label4_MouseUp(const MouseState &mouse);
  void Label2_MouseUp();
  void Timer1_Timer();
  void mnuSetings_Click();
  void mnuRecords_Click();
  void mnuRecentWW_Click();
  void mnuStrong_Click();
  void mnuTop_Click();
  static void mnuAbout_Click();
  static void mnuQuit_Click();

  /// Keeps the bar above the windows of other programs if "On Top" is ticked.
  void ApplyOnTop();

 private:
  void OpenMenu();
};

inline constexpr Form<ShortBarForm> Form1;

}  // namespace borvane
