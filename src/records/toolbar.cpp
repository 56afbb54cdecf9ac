#include "bars/Form1.h"
#include "bars/newTagFrm.h"
#include "basic/date.h"
#include "core/program.h"
#include "core/start.h"
#include "core/time_text.h"
#include "feed/area.h"
#include "feed/refresh.h"
#include "records/frmRecords.h"
#include "scan/event_rows.h"
#include "settings/conffrm.h"

namespace borvane {

namespace {

std::string OrNotAvailable(const std::string &text) { return text.empty() ? "N/A" : text; }

}  // namespace

void RecordsForm::Toolbar1_ButtonClick(int number) {
  switch (number) {
    case button_refresh:
      SwitchAutoRefresh();
      break;
    case button_settings:
      SwitchSettings();
      break;
    case button_long_bar:
      Module1->BarMode = face_long_bar;
      newTagFrm->Show();
      Hide();
      break;
    case button_short_bar:
      Module1->BarMode = face_short_bar;
      Form1->Show();
      Hide();
      break;
    case button_quit:
      QuitProgram();
      break;
    default:
      break;
  }
}

void RecordsForm::SwitchAutoRefresh() {
  const std::string area = conffrm->Combo2.Text();
  if (Toolbar1.Buttons(button_refresh).Value() == 1 && !area.empty()) {
    if (ListView1.ListItems.Count() == 0 || Module1->RefreshCount > 0)
      RefreshAtSwitch();

    Timer1.Enabled = true;

    if (conffrm->Check5.Value() == 1)
      RefreshWorld();

    StatusBar1.Panels(3).Text = std::string("Auto Refresh ") + (Timer1.Enabled() ? "On" : "Off");

    Toolbar1.Buttons(button_long_bar).Enabled = true;
    Toolbar1.Buttons(button_short_bar).Enabled = true;

    Label2(0).Caption = conffrm->Combo2.Text();
    Label2(1).Caption = OrNotAvailable(conffrm->Text6(0).Text());
    Label2(2).Caption = OrNotAvailable(conffrm->Text6(1).Text());

    Timer3_Timer();
    return;
  }

  // Meant (panel-keeps-auto-refresh-on): the third panel should say that the refresh is off now. It keeps its
  // text.
  Timer1.Enabled = false;
  Module1->RefreshCount = 0;
  Toolbar1.Buttons(button_refresh).Value = 0;
  if (area.empty()) {
    Toolbar1.Buttons(button_settings).Value = 1;
    conffrm->Show();
    conffrm->Timer1.Enabled = true;
  }
}

void RecordsForm::RefreshAtSwitch() {
  MousePointer = pointer_hourglass;
  // Meant (switching-on-empties-the-list): the rows should stay until there are new ones, as they do in a refresh by
  // the clock. Without an answer the list stays empty.
  SetupColumns(columns_until_first_scan);
  GetAreaUrl();
  Integer mode = refresh_with_hourglass;
  RefreshEvents(mode);
  const Date now = platform().clock.Now();
  Label2(3).Caption = TimeText(now) + "  " + FormatDate(now, "mmm dd");
  MousePointer = pointer_normal;
  CheckForUpdate();
}

void RecordsForm::SwitchSettings() {
  // Meant (settings-stop-a-clock-without-its-switch): the timer should go on after the settings as it did before. It is
  // started again only while the switch is down, and not where the R key has started it.
  Timer1.Enabled = false;

  if (Toolbar1.Buttons(button_settings).Value() == 1) {
    conffrm->Timer1.Enabled = true;
    conffrm->Show(this);
  } else {
    // Meant (toolbar-stores-no-choices): the choices for the log and for the screen's edge should be stored however the
    // window is closed. "Close" and the close box store them, and this only hides the window.
    conffrm->Hide();
    // Meant (area-index-stays): the position of the stored area should follow the choice. It is found at the start
    // alone, so after one change of area every closing of the settings refreshes at once.
    if (conffrm->Combo2.List(Module1->AreaIndex) != conffrm->Combo2.Text()) {
      Module1->RefreshCount = 1;
      SwitchAutoRefresh();
      return;
    }
  }

  if (Toolbar1.Buttons(button_refresh).Value() == 1)
    Timer1.Enabled = true;
}

}  // namespace borvane
