#include "info/Aboutfrm.h"

#include "core/program.h"
#include "feed/hosts.h"
#include "records/frmRecords.h"

namespace borvane {

AboutForm::AboutForm()
    : FormBase({.Name = "Aboutfrm",
                .Caption = "Borvane 2007",
                .ClientWidth = 5595,
                .ClientHeight = 2790,
                .Border = BorderStyle::FixedSingle,
                .Start = StartPlace::MiddleOfFirstScreen}) {
  Label1.Click = [this] { Label1_Click(); };
}

void AboutForm::Form_Load() {
  Label1.Caption = AddressOf(Endpoint::Maker, "");

  // Meant (about-counts-the-users-at-its-load): the line should follow the number of users online. It is the one that
  // was known when the window was loaded, and begins with its blank when none was known yet.
  Label5.Caption = frmRecords->Label9.Caption() + " with this version";
}

void AboutForm::Label1_Click() { platform().shell.Open(Label1.Caption() + "/products.html", this); }

}  // namespace borvane
