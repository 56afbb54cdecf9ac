#pragma once

#include "controls/form.h"
#include "controls/form_set.h"
#include "controls/label.h"
#include "controls/timer.h"

namespace borvane {

/// The alert popup: a small dark window above all others that shows a magnitude. It closes by its close box alone.
struct QuakeAlertForm : FormBase {
  static constexpr Color ground = 0x202020;
  static constexpr Color yellow = 0x00FFFF;

  QuakeAlertForm();

  Label Label1{*this,
               "Label1",
               {.Left = 60,
                .Top = 120,
                .Width = 1590,
                .Height = 450,
                .FontName = "MS Sans Serif",
                .FontSize = 18,
                .Bold = true,
                .ForeColor = color_highlight_text,
                .Alignment = Alignment::Center,
                .WordWrap = true}};
  Label Label2{
      *this,
      "Label2",
      {.Left = 0, .Top = 495, .Width = 1695, .Height = 225, .ForeColor = yellow, .Alignment = Alignment::Center}};
  TimerControl Timer1{*this, "Timer1", {.Interval = 100, .Enabled = false}};

  void Form_Load() override;
  void Label1_Click();
  void Timer1_Timer();
};

inline constexpr Form<QuakeAlertForm> frmQalert;

}  // namespace borvane
