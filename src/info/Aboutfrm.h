#pragma once

#include "controls/form.h"
#include "controls/form_set.h"
#include "controls/label.h"

namespace borvane {

/// The about window. It closes by its close box alone.
struct AboutForm : FormBase {
  AboutForm();

  Label Label3{*this,
               "Label3",
               {.Caption = "Borvane Live",
                .Left = 240,
                .Top = 180,
                .Width = 5115,
                .Height = 630,
                .FontName = "Arial Narrow",
                .FontSize = 26,
                .Bold = true}};
  // Meant (about-version-is-a-fixed-text): the version should follow the program's own. Its text is part of the design.
  Label Label2{*this, "Label2", {.Caption = "version 2 b3.5", .Left = 240, .Top = 900, .Width = 5115, .Height = 225}};
  Label Label4{*this,
               "Label4",
               {.Caption = "Watches the recent earthquakes of an area of your choice",
                .Left = 240,
                .Top = 1260,
                .Width = 5115,
                .Height = 225}};
  Label Label1{*this,
               "Label1",
               {.Left = 240,
                .Top = 1665,
                .Width = 5115,
                .Height = 300,
                .FontName = "Arial Narrow",
                .FontSize = 12,
                .Underline = true}};
  Label Label5{*this, "Label5", {.Left = 240, .Top = 2280, .Width = 5115, .Height = 225, .AutoSize = true}};

  void Form_Load() override;
  void Label1_Click();
};

inline constexpr Form<AboutForm> Aboutfrm;

}  // namespace borvane
