#pragma once

#include <string>
#include <vector>

#include "controls/control_array.h"
#include "controls/form.h"
#include "controls/form_set.h"
#include "controls/frame.h"
#include "controls/label.h"
#include "controls/list_view.h"
#include "controls/menu.h"
#include "controls/pictures.h"
#include "controls/status_bar.h"
#include "controls/timer.h"
#include "controls/toolbar.h"

namespace borvane {

/// The main window: the newest event, the list of events, the refresh switch and the status line.
struct RecordsForm : FormBase {
  RecordsForm();

  // The buttons of Toolbar1.
  static constexpr int button_refresh = 1;
  static constexpr int button_settings = 2;
  static constexpr int button_long_bar = 3;
  static constexpr int button_short_bar = 4;
  static constexpr int button_quit = 5;

  /// The columns of ListView1 until a scanner sets its own.
  static std::vector<ColumnHeader> FirstColumns();

  Frame Frame1{*this, "Frame1", {.Caption = " Current Map ", .Left = 80, .Top = 0, .Width = 10920, .Height = 510}};
  ControlArray<Label, 4> Label1{
      Frame1,
      "Label1",
      {{{.Caption = "City:", .Left = 120, .Top = 210, .Width = 420, .Height = 195},
        {.Caption = "Latitude:", .Left = 3060, .Top = 210, .Width = 735, .Height = 195},
        {.Caption = "Longitude:", .Left = 5310, .Top = 210, .Width = 855, .Height = 195},
        {.Caption = "Last change:", .Left = 7650, .Top = 210, .Width = 1020, .Height = 195}}}};
  ControlArray<Label, 4> Label2{Frame1,
                                "Label2",
                                {{{.Left = 570, .Top = 210, .Width = 2400, .Height = 195},
                                  {.Left = 3825, .Top = 210, .Width = 1395, .Height = 195},
                                  {.Left = 6195, .Top = 210, .Width = 1365, .Height = 195},
                                  {.Left = 8700, .Top = 210, .Width = 2130, .Height = 195}}}};

  Frame Frame3{*this, "Frame3", {.Caption = " Last Activity ", .Left = 80, .Top = 540, .Width = 10920, .Height = 750}};
  ListView ListView2{Frame3,
                     "ListView2",
                     {.Columns = {{"", 1440}, {"", 6440}, {"", 2440}},
                      .HideColumnHeaders = true,
                      .Left = 90,
                      .Top = 195,
                      .Width = 10620,
                      .Height = 465}};

  Label Label4{*this, "Label4", {.Caption = "Global Monitor:", .Left = 135, .Top = 1350, .Width = 1260, .Height = 225}};
  Label Label3{
      *this, "Label3", {.Caption = "N/A", .Left = 1470, .Top = 1370, .Width = 9180, .Height = 195, .Visible = false}};
  Image Image1{*this, "Image1", {.Picture = "watermark", .Left = 6705, .Top = 1470, .Width = 3930, .Height = 465}};
  Label Label9{*this, "Label9", {.Left = 165, .Top = 1740, .Width = 45, .Height = 180, .Visible = false}};

  Frame Frame4{*this, "Frame4", {.Left = 120, .Top = 1965, .Width = 750, .Height = 5970}};
  Toolbar Toolbar1{Frame4,
                   "Toolbar1",
                   {.Buttons = {{.Picture = "refresh", .ToolTipText = "Auto Refresh", .TwoState = true},
                                {.Picture = "settings", .ToolTipText = "Settings", .TwoState = true},
                                {.Picture = "longbar", .ToolTipText = "Long Bar", .Enabled = false},
                                {.Picture = "shortbar", .ToolTipText = "Short Bar", .Enabled = false},
                                {.Picture = "quit", .ToolTipText = "Quit"}},
                    .Left = 60,
                    .Top = 300,
                    .Width = 630,
                    .Height = 2910}};
  Label Label5{
      Frame4, "Label5", {.Caption = "Logs", .Left = 90, .Top = 3525, .Width = 510, .Height = 225, .Enabled = false}};
  Label Label7{Frame4, "Label7", {.Caption = "Help", .Left = 90, .Top = 3960, .Width = 495, .Height = 195}};
  Label Label6{Frame4, "Label6", {.Caption = "Version", .Left = 90, .Top = 4380, .Width = 525, .Height = 240}};
  Label Label8{
      Frame4, "Label8", {.Caption = "Refresh", .Left = 90, .Top = 4815, .Width = 600, .Height = 195, .Enabled = false}};

  Frame Frame2{*this, "Frame2", {.Caption = " History ", .Left = 930, .Top = 1965, .Width = 9690, .Height = 5970}};
  ListView ListView1{
      Frame2, "ListView1", {.Columns = FirstColumns(), .Left = 180, .Top = 315, .Width = 9285, .Height = 5460}};

  Label Label10{
      *this, "Label10", {.Caption = "[ ]", .Left = 10605, .Top = 7680, .Width = 240, .Height = 195, .Visible = false}};
  StatusBar StatusBar1{
      *this, "StatusBar1", {.PanelWidths = {1840, 4440, 4440, 1440}, .Top = 7950, .Width = 11025, .Height = 375}};

  TimerControl Timer1{*this, "Timer1", {.Enabled = false}};
  TimerControl Timer2{*this, "Timer2", {.Interval = 10000}};
  TimerControl Timer3{*this, "Timer3", {.Interval = 60000}};

  Menu Tmnu{*this, "Tmnu", {.Caption = "Menu"}};
  MenuItem mnuMapGoo{Tmnu, "mnuMapGoo", {.Caption = "Open in Google Maps"}};
  MenuItem mnuOpenMap{Tmnu, "mnuOpenMap", {.Caption = "More Info"}};
  MenuItem mnuReportIt{Tmnu, "mnuReportIt", {.Caption = "Submit Report"}};
  MenuItem mnuViewReps{Tmnu, "mnuViewReps", {.Caption = "View Reports"}};
  MenuItem mnuGrid{Tmnu, "mnuGrid", {.Caption = "Grid lines"}};

  Menu TmnuGlobal{*this, "TmnuGlobal", {.Caption = "Global Menu"}};
  MenuItem mnuGlobalInfo{TmnuGlobal, "mnuGlobalInfo", {.Caption = "More Info"}};
  MenuItem mnuWiki{TmnuGlobal, "mnuWiki", {.Caption = "Consult Wiki"}};
  MenuItem mnuwikipassGoogle{TmnuGlobal, "mnuwikipassGoogle", {.Caption = "Wiki through Google"}};

  void Form_Load() override;
  void Form_Resize() override;
  void Form_QueryUnload(Integer &cancel, UnloadMode mode) override;
  void Form_KeyUp(Integer key_code, Integer shift) override;
  void Form_MouseMove(const MouseState &mouse) override;
  void Label3_MouseMove();
  void Label3_MouseUp(const MouseState &mouse);
  void Label5_Click();
  void Label6_Click();
  void Label7_Click();
  void Label8_Click();
  void Timer1_Timer();
  void Timer2_Timer();
  void Timer3_Timer();
  void Toolbar1_ButtonClick(int number);
  static void ListView1_BeforeLabelEdit(Integer &cancel);
  void ListView1_ColumnClick(const ColumnHeader &header);
  void ListView1_MouseUp(const MouseState &mouse);
  void mnuMapGoo_Click();
  void mnuOpenMap_Click();
  void mnuReportIt_Click();
  void mnuViewReps_Click();
  void mnuGrid_Click();
  void mnuGlobalInfo_Click();
  void mnuWiki_Click();
  void mnuwikipassGoogle_Click();

  /// What ties a felt report to the event that is selected in the list: magnitude, date, time, latitude and longitude.
  /// Raises an object failure when none is selected.
  std::string MakeEventKey() const;

  /// Offers the newer version, if the maker's service names one.
  void CheckForUpdate();

 private:
  void SwitchAutoRefresh();
  void RefreshAtSwitch();
  void SwitchSettings();
  void ReadOutSelectedRow(bool is_region);
  void OpenListMenu();
};

inline constexpr Form<RecordsForm> frmRecords;

}  // namespace borvane
