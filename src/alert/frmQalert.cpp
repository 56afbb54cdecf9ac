#include "alert/frmQalert.h"

#include "alert/sound_alarm.h"
#include "core/program.h"
#include "feed/area.h"
#include "settings/conffrm.h"

namespace borvane {

QuakeAlertForm::QuakeAlertForm()
    : FormBase({.Name = "frmQalert",
                .Caption = " Quake Alert",
                .ClientWidth = 1710,
                .ClientHeight = 780,
                .Border = BorderStyle::FixedDialog,
                .Start = StartPlace::MiddleOfFirstScreen,
                .BackColor = ground,
                .TakesFocus = false}) {
  MousePointer = pointer_custom;
  Label1.Click = [this] { Label1_Click(); };
  Timer1.Timer = [this] { Timer1_Timer(); };
}

void QuakeAlertForm::Form_Load() { KeepOnTop(true); }

void QuakeAlertForm::Label1_Click() {
  // Meant (popup-opens-the-areas-page): the magnitude should lead to its event's page, and the shared address should be
  // left as it is. It leads to the page of the area, whose whole address the links then begin with.
  GetAreaUrl();
  platform().shell.Open(Module1->SiteRoot, this);
}

void QuakeAlertForm::Timer1_Timer() {
  Timer1.Enabled = false;
  if (conffrm->Check2.Value() == 1)
    SoundAlarm();
}

}  // namespace borvane
