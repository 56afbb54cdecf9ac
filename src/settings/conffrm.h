#pragma once

#include "controls/buttons.h"
#include "controls/combo_box.h"
#include "controls/control_array.h"
#include "controls/form.h"
#include "controls/form_set.h"
#include "controls/frame.h"
#include "controls/label.h"
#include "controls/pictures.h"
#include "controls/text_box.h"
#include "controls/timer.h"
#include "feed/inet.h"

namespace borvane {

/// The settings window. Its controls are the live settings: the program reads them at the moment of use, and each
/// control's handler stores its own value. It stays loaded, mostly hidden, for the whole run.
struct SettingsForm : FormBase {
  SettingsForm();

  ComboBox Combo2{*this, "Combo2", {.ToolTipText = "Area Select"}};
  TextBox Text2{*this, "Text2", {.Text = "700", .ToolTipText = "Refresh Rate: 60 for each minute"}};
  TextBox Text1{*this, "Text1", {.Text = "3.5", .ToolTipText = "Alert if Quake is box Val or higher"}};
  ControlArray<Label, 16> Label1{*this,
                                 "Label1",
                                 {{{.Caption = "Zone"},
                                   {.Caption = "Refresh "},
                                   {.Caption = "Sec."},
                                   {.Caption = "Alert on Mag >="},
                                   {.Caption = "Magnitude"},
                                   {.Caption = "Bar Top"},
                                   // Meant (bar-left-label-is-always-grey): the label should be enabled like its box,
                                   // or follow it. Nothing ever enables it.
                                   {.Caption = "Bar Left", .Enabled = false},
                                   {.Caption = "Alarm Tone"},
                                   {.Caption = "Repetition"},
                                   {.Caption = "Latitude ", .Enabled = false},
                                   {.Caption = "Longitude", .Enabled = false},
                                   {.Caption = "Location"},
                                   {.Caption = "zone/city"},
                                   {.Caption = "Color #: "},
                                   {.Caption = ""},
                                   {.Caption = "Strongest Mag display"}}}};
  CheckBox Check4{*this, "Check4", {.Caption = "Lat/Long"}};
  ControlArray<TextBox, 2> Text6{*this, "Text6", {{{.Enabled = false}, {.Enabled = false}}}};
  Label Label5{*this, "Label5", {.Caption = "Select zone OR position method", .FontName = "Arial"}};
  TextBox Text3{*this, "Text3", {}};
  TextBox Text4{*this, "Text4", {}};
  CheckBox Check6{*this, "Check6", {.Caption = "Save size and position"}};
  CheckBox Check3{*this, "Check3", {.Caption = "Colorize Bar tags"}};
  ControlArray<PictureBox, 3> Picture1{
      *this, "Picture1", {{{.BackColor = 0x0000FF}, {.BackColor = 0x00C000}, {.BackColor = 0xFFFFFF}}}};
  Label Label3{*this, "Label3", {.Caption = "Time"}};
  Frame Frame1{*this, "Frame1", {}};
  Label Label4{Frame1, "Label4", {.Caption = "On edge detection"}};
  ControlArray<OptionButton, 3> Option1{
      Frame1, "Option1", {{{.Caption = "Move", .Value = true}, {.Caption = "Hide"}, {.Caption = "Ignore"}}}};
  TextBox Text7{Frame1, "Text7", {.Text = "900"}};
  CheckBox Check1{*this, "Check1", {.Caption = "Log"}};
  ControlArray<OptionButton, 2> Option2{
      *this, "Option2", {{{.Caption = "All", .Enabled = false}, {.Caption = "Only for", .Enabled = false}}}};
  // Meant (place-box-starts-enabled): the box should be disabled with its option while nothing is logged. Only the
  // first click on "Log" makes it follow.
  TextBox Text8{*this, "Text8", {}};
  CheckBox Check7{*this, "Check7", {.Caption = "Start with Windows"}};
  CheckBox Check5{*this, "Check5", {.Caption = "World Snapshot", .Value = 1}};
  CheckBox Check2{*this, "Check2", {.Caption = "Sound is "}};
  Label Label2{*this, "Label2", {.Caption = "Disabled"}};
  ControlArray<TextBox, 2> Text5{*this, "Text5", {{{.Text = "10"}, {.Text = "7"}}}};
  ControlArray<CommandButton, 2> Command1{*this, "Command1", {{{.Caption = "Test"}, {.Caption = "Reset"}}}};
  ComboBox Combo1{*this, "Combo1", {.Entries = {"Keep highest Magnitude", "Update on refresh!"}, .Editable = false}};
  CommandButton Command2{*this, "Command2", {.Caption = "Close"}};
  TimerControl Timer1{*this, "Timer1", {.Interval = 200, .Enabled = false}};
  Inet Inet1{*this, "Inet1", {}};

  void Form_Load() override;
  void Form_QueryUnload(Integer &cancel, UnloadMode mode) override;
  void Combo2_Click();
  void Text2_LostFocus();
  void Text1_LostFocus();
  void Check4_Click();
  void Text3_LostFocus();
  void Text4_Change();
  void Check6_Click();
  void Check3_MouseUp();
  void Picture1_Click(int i);
  void Picture1_MouseMove(int i);
  void Text7_LostFocus();
  void Check1_Click();
  void Option2_Click();
  void Text8_LostFocus();
  void Check7_Click();
  void Check2_MouseUp();
  void Text5_Change(int i);
  void Command1_Click(int i);
  void Combo1_Click();
  void Command2_Click();
  void Timer1_Timer();
  void Inet1_StateChanged();

 private:
  void AllowClose();
  static void WriteStartEntry();
};

inline constexpr Form<SettingsForm> conffrm;

}  // namespace borvane
