#pragma once

#include <string>
#include <string_view>

#include "controls/buttons.h"
#include "controls/combo_box.h"
#include "controls/control_array.h"
#include "controls/form.h"
#include "controls/form_set.h"
#include "controls/frame.h"
#include "controls/label.h"
#include "controls/list_view.h"
#include "controls/text_box.h"
#include "controls/timer.h"
#include "feed/inet.h"

namespace borvane {

/// The felt report: a form in one frame, the thanks for it in another, and the list of what others have reported.
struct ReportForm : FormBase {
  ReportForm();

  // Text1.
  static constexpr int text_name = 0;
  static constexpr int text_age = 1;
  static constexpr int text_zip = 2;
  static constexpr int text_school = 3;
  static constexpr int text_comments = 4;

  // Check2, as far as a box has a meaning of its own.
  static constexpr int check_pictures_moved = 0;
  static constexpr int check_at_school = 5;
  static constexpr int check_scared = 6;

  // Label3.
  static constexpr int link_other_countries = 0;
  static constexpr int link_usa = 1;
  static constexpr int link_reports = 2;
  static constexpr int heading_links = 3;

  // Command1.
  static constexpr int button_submit = 0;
  static constexpr int button_cancel = 1;

  // Meant (report-captions-keep-their-slips): "awaked", "What you did?", "How did it felt?" and "5ft floor" should be
  // put right. They are the texts of the form that reporters have always filled in.
  Frame Frame1{*this, "Frame1", {.Left = 195, .Top = 510, .Width = 7065, .Height = 4740}};
  ControlArray<Label, 9> Label1{Frame1,
                                "Label1",
                                {{{.Caption = "My Name is:"},
                                  {.Caption = "I am"},
                                  {.Caption = "Zip Code:"},
                                  {.Caption = "My school name:", .Enabled = false},
                                  {.Caption = "What you did?"},
                                  {.Caption = "years old"},
                                  {.Caption = "How did it felt?"},
                                  {.Caption = "Comments"},
                                  {.Caption = "Where were you?"}}}};
  ControlArray<TextBox, 5> Text1{Frame1, "Text1", {{{}, {}, {}, {.Enabled = false}, {.MultiLine = true}}}};
  CheckBox Check1{Frame1, "Check1", {.Caption = "This computer is at school"}};
  ControlArray<CheckBox, 7> Check2{Frame1,
                                   "Check2",
                                   {{{.Caption = "Pictures on walls moved from position"},
                                     {.Caption = "Cracks appeared on walls"},
                                     {.Caption = "Objects fell from shelves"},
                                     {.Caption = "Sleeping people awaked"},
                                     {.Caption = "It was hard to stand"},
                                     {.Caption = "I was at school"},
                                     {.Caption = "I was scared"}}}};
  ComboBox Combo1{Frame1, "Combo1", {}};
  ComboBox Combo2{Frame1, "Combo2", {.Entries = {"weak", "mild", "moderate", "strong", "violent!"}}};
  // The position of a floor is its term in the felt magnitude.
  ComboBox Combo3{
      Frame1,
      "Combo3",
      {.Entries = {"Ground level", "1st floor", "2nd floor", "3rd floor", "4th floor", "5ft floor", "6th floor",
                   "7th floor", "8th floor", "9th floor", "10th floor", "11-20 floor", "21-30 floor", "Higher!"}}};

  Frame Frame2{*this, "Frame2", {.Left = 135, .Top = 450, .Width = 7185, .Height = 4485, .Visible = false}};

  // The event's key is above the frames, the rest is the thanks.
  ControlArray<Label, 5> Label2{
      "Label2",
      {{{*this, {.Caption = "Event:"}},
        {*this, {}},
        {Frame2, {.Caption = "Thank you!!               Your report was received!", .Visible = false, .Bold = true}},
        {Frame2, {.Caption = "Your  BVMag  is:"}},
        {Frame2, {.Caption = "0.00"}}}}};
  ControlArray<Label, 4> Label3{Frame2,
                                "Label3",
                                {{{.Caption = "For reports to earthquakes non in the USA click here"},
                                  {.Caption = "Fill and send a report to the  US Geological Survey"},
                                  {.Caption = "View reports "},
                                  {.Caption = "Other activities you might be interested in:", .Bold = true}}}};

  // Meant (report-list-lies-beside-the-window): the list should be where the frames are, or the window as wide as both.
  // Nothing moves the one or widens the other: the user drags the window wider, and the form keeps its place.
  ListView ListView1{*this,
                     "ListView1",
                     {.Columns = {{"Zip", {}}, {"BV Mag", {}}, {"Reports", {}}},
                      .Left = 9000,
                      .Top = 390,
                      .Width = 7200,
                      .Height = 4950,
                      .Visible = false}};

  // On the window, below the frames.
  ControlArray<CommandButton, 2> Command1{
      *this, "Command1", {{{.Caption = "Submit", .Enabled = false}, {.Caption = "Cancel"}}}};

  TimerControl Timer1{*this, "Timer1", {.Interval = 200, .Enabled = false}};
  Inet Inet1{*this, "Inet1", {}};

  void Form_Load() override;
  void Form_MouseMove(const MouseState &mouse) override;
  void Text1_GotFocus();
  void Text1_LostFocus(int i);
  void Check1_Click();
  void Check2_Click(int i);
  void Combo2_Click();
  void Command1_Click(int i);
  void Label3_Click(int i);
  void Label3_MouseMove(int i);
  void Timer1_Timer();

  /// Lets events run while a request of Inet1 is under way.
  void WaitWhileBusy();

 private:
  void TakeReporter();
  void Submit();
  void SendReport();
  std::string Ask(std::string_view query);
  void ClearUnderlines();
};

inline constexpr Form<ReportForm> ComPart;

}  // namespace borvane
