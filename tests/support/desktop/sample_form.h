#pragma once

#include "controls/buttons.h"
#include "controls/combo_box.h"
#include "controls/control_array.h"
#include "controls/form.h"
#include "controls/form_set.h"
#include "controls/frame.h"
#include "controls/label.h"
#include "controls/list_view.h"
#include "controls/menu.h"
#include "controls/pictures.h"
#include "controls/status_bar.h"
#include "controls/text_box.h"
#include "controls/timer.h"
#include "controls/toolbar.h"
#include "support/small_notice.h"

namespace borvane {

/// A window with a control of every kind, whose events a test wires before the window is shown.
struct SampleForm : FormBase {
  SampleForm() : FormBase({.Name = "SampleForm", .Caption = "Sample", .ClientWidth = 9000, .ClientHeight = 6000}) {}

  Frame Frame1{*this, "Frame1", {.Caption = " Choices ", .Left = 150, .Top = 150, .Width = 3000, .Height = 1500}};
  ControlArray<OptionButton, 3> Option1{Frame1,
                                        "Option1",
                                        {{{.Caption = "North", .Left = 150, .Top = 300, .Width = 1200, .Height = 300},
                                          {.Caption = "South", .Left = 150, .Top = 600, .Width = 1200, .Height = 300},
                                          {.Caption = "West", .Left = 150, .Top = 900, .Width = 1200, .Height = 300}}}};
  Label Label1{*this, "Label1", {.Caption = "Depth", .Left = 3300, .Top = 150, .Width = 1200, .Height = 195}};
  Label Link1{*this, "Link1", {.Caption = "More", .Left = 3300, .Top = 450, .Width = 600, .Height = 195}};
  TextBox Text1{*this, "Text1", {.Text = "10", .Left = 4650, .Top = 150, .Width = 1500, .Height = 300}};
  TextBox Text2{*this, "Text2", {.Left = 4650, .Top = 600, .Width = 1500, .Height = 300}};
  TextBox Text3{*this, "Text3", {.MultiLine = true, .Left = 900, .Top = 4850, .Width = 3000, .Height = 720}};
  CheckBox Check1{*this, "Check1", {.Caption = "Log", .Left = 3300, .Top = 900, .Width = 1200, .Height = 300}};
  CommandButton Command1{
      *this, "Command1", {.Caption = "Close", .Left = 3300, .Top = 1200, .Width = 1200, .Height = 375}};
  ComboBox Combo1{*this,
                  "Combo1",
                  {.Entries = {"* STATES", "Utah", "Nevada"}, .Left = 6300, .Top = 150, .Width = 2400, .Height = 315}};
  ComboBox Combo2{
      *this,
      "Combo2",
      {.Entries = {"Keep", "Update"}, .Editable = false, .Left = 6300, .Top = 600, .Width = 2400, .Height = 315}};
  PictureBox Picture1{
      *this, "Picture1", {.BackColor = 0x0000FF, .Left = 6300, .Top = 1050, .Width = 300, .Height = 300}};
  Image Image1{*this, "Image1", {.Picture = "watermark", .Left = 4650, .Top = 1050, .Width = 1500, .Height = 300}};
  Toolbar Toolbar1{*this,
                   "Toolbar1",
                   {.Buttons = {{.Picture = "refresh", .ToolTipText = "Auto Refresh", .TwoState = true},
                                {.Picture = "longbar", .ToolTipText = "Long Bar", .Enabled = false},
                                {.Picture = "quit", .ToolTipText = "Quit"}},
                    .Left = 150,
                    .Top = 1800,
                    .Width = 630,
                    .Height = 1800}};
  ListView ListView1{*this,
                     "ListView1",
                     {.Columns = {{"Magnitude", {}}, {"Where?", 3000}, {"", 1}},
                      .Left = 900,
                      .Top = 1800,
                      .Width = 7800,
                      .Height = 3000}};
  StatusBar StatusBar1{*this, "StatusBar1", {.PanelWidths = {1800, 3000}, .Height = 375}};
  TimerControl Timer1{*this, "Timer1", {}};

  void Form_KeyUp(Integer key_code, Integer shift) override { KeyUp.Raise(key_code, shift); }
  void Form_MouseMove(const MouseState &mouse) override { FormMouseMove.Raise(mouse); }
  void Form_Resize() override { Resize.Raise(); }
  void Form_QueryUnload(Integer &cancel, UnloadMode mode) override { QueryUnload.Raise(cancel, mode); }

  Event<int, int> KeyUp;
  Event<const MouseState &> FormMouseMove;
  Event<> Resize;
  Event<Integer &, UnloadMode> QueryUnload;
};

inline constexpr Form<SampleForm> sample;

/// A second window beside it.
struct OtherForm : FormBase {
  OtherForm()
      : FormBase({.Name = "OtherForm",
                  .Caption = "Other",
                  .ClientWidth = 3000,
                  .ClientHeight = 1500,
                  .Border = BorderStyle::FixedDialog}) {}

  TextBox Text1{*this, "Text1", {.Left = 150, .Top = 150, .Width = 1500, .Height = 300}};
};

inline constexpr Form<OtherForm> other_form;

/// A small dark window over the others.
struct NoticeForm : SmallNotice {
  NoticeForm() : SmallNotice("NoticeForm") {}

  Label Label1{*this,
               "Label1",
               {.Caption = "5.2",
                .Left = 60,
                .Top = 120,
                .Width = 1590,
                .Height = 450,
                .FontSize = 18,
                .Bold = true,
                .ForeColor = 0x8000000E,
                .Alignment = Alignment::Center,
                .WordWrap = true}};
  Label Label2{*this, "Label2", {.Left = 0, .Top = 495, .Width = 1695, .Height = 225, .Alignment = Alignment::Right}};
};

inline constexpr Form<NoticeForm> notice;

/// A bar without a frame, whose labels are in a box of their own colour.
struct BarForm : FormBase {
  BarForm()
      : FormBase({.Name = "BarForm",
                  .Caption = "Bar",
                  .ClientWidth = 7500,
                  .ClientHeight = 435,
                  .Border = BorderStyle::None,
                  .BackColor = 0}) {}

  PictureBox Picture1{*this, "Picture1", {.BackColor = 0, .Left = 75, .Top = 45, .Width = 7215, .Height = 350}};
  ControlArray<Label, 2> Label1{
      Picture1,
      "Label1",
      {{{.Caption = "Mag: ", .Left = 0, .Top = 30, .ForeColor = 0x80000013, .AutoSize = true},
        {.Caption = "location: ", .Left = 1500, .Top = 30, .ForeColor = 0x80000013, .AutoSize = true}}}};

  Menu Tmnu{*this, "Tmnu", {.Caption = "Menu"}};
  MenuItem mnuExpand{Tmnu, "mnuExpand", {.Caption = "Expand"}};
  MenuItem sep1{Tmnu, "sep1", {.Caption = "-"}};
  MenuItem mnuTop{Tmnu, "mnuTop", {.Caption = "On Top", .Checked = true}};
  MenuItem mnuHidden{Tmnu, "mnuHidden", {.Caption = "Hidden", .Visible = false}};
  MenuItem mnuPale{Tmnu, "mnuPale", {.Caption = "Pale", .Enabled = false}};
  MenuItem mnuText{Tmnu, "mnuText", {.Caption = "Q&A"}};

  void Form_KeyUp(Integer key_code, Integer shift) override { KeyUp.Raise(key_code, shift); }

  Event<int, int> KeyUp;
};

inline constexpr Form<BarForm> bar_form;

}  // namespace borvane
