#include "info/banner.h"

#include "core/program.h"
#include "feed/hosts.h"

namespace borvane {

// The Show that follows the load brings the window to the front.
BannerForm::BannerForm()
    : FormBase({.Name = "banner",
                .Caption = "Borvane ",
                .ClientWidth = 7170,
                .ClientHeight = 1815,
                .Start = StartPlace::MiddleOfFirstScreen}) {
  Picture1.Click = [this] { Picture1_Click(); };
  Label3.Click = [this] { Label3_Click(); };
}

void BannerForm::Picture1_Click() { platform().shell.Open(AddressOf(Endpoint::Maker, "/borvane/index.html"), this); }

void BannerForm::Label3_Click() { Picture1_Click(); }

}  // namespace borvane
