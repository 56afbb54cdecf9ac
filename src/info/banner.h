#pragma once

#include "controls/form.h"
#include "controls/form_set.h"
#include "controls/label.h"
#include "controls/pictures.h"

namespace borvane {

/// The support notice of the first runs. It closes by its close box alone.
struct BannerForm : FormBase {
  static constexpr Color white = 0xFFFFFF;
  static constexpr Color blue = 0xFF0000;

  BannerForm();

  Label Label1{*this,
               "Label1",
               {.Caption = "Your help is needed to support this project",
                .Left = 120,
                .Top = 105,
                .Width = 6930,
                .Height = 225,
                .Bold = true,
                .Alignment = Alignment::Center}};
  PictureBox Picture1{*this, "Picture1", {.BackColor = white, .Left = 0, .Top = 420, .Width = 7170, .Height = 750}};
  Label Label3{Picture1,
               "Label3",
               {.Caption = "How can your help make a difference",
                .Left = 120,
                .Top = 150,
                .Width = 6930,
                .Height = 450,
                .FontSize = 18,
                .Bold = true,
                .Underline = true,
                .ForeColor = blue,
                .Alignment = Alignment::Center}};
  Label Label2{
      *this,
      "Label2",
      {.Caption =
           "This ad supports our free software. It will show 4 times only. Please click at least once. Thank you",
       .Left = 120,
       .Top = 1260,
       .Width = 6930,
       .Height = 450,
       .Alignment = Alignment::Center,
       .WordWrap = true}};

  void Picture1_Click();
  void Label3_Click();
};

inline constexpr Form<BannerForm> banner;

}  // namespace borvane
