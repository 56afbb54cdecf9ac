#include "bars/bar_actions.h"

#include "controls/key_codes.h"
#include "core/program.h"
#include "feed/hosts.h"
#include "records/frmRecords.h"
#include "records/links.h"
#include "settings/conffrm.h"
#include "settings/values.h"

namespace borvane {

void OpenHomePage(FormBase &bar) { platform().shell.Open(AddressOf(Endpoint::Maker, "/borvane/"), &bar); }

void OpenLink(FormBase &bar, std::string_view address) {
  Module1->OpenLinkTarget = address;
  platform().shell.Open(Module1->OpenLinkTarget, &bar);
}

void OpenStrongMotionMaps(FormBase &bar) {
  OpenLink(bar, AddressOf(BrowserEndpoint::StrongMotion, "/research/strongmotion/effects/shake/archive/"));
}

void OpenSelectedEvent(FormBase &bar) {
  // Meant (label-click-opens-the-selected-row): a label of a bar should lead to the event that it shows. It leads to
  // the row that is selected in the list, whichever it is.
  // Meant (label-of-an-empty-list-ends-the-program): without a row the click should open nothing. There is no selected
  // row to read, and no trap holds that.
  std::string address;
  OpenMapPage(address);
  platform().shell.Open(address, &bar);
}

void ShowHeadline(Label &label) {
  if (conffrm->Check5.Value() == 1)
    label.ToolTipText = "World: " + frmRecords->Label3.Caption();
}

void ShowSettings() {
  conffrm->Show();
  conffrm->Timer1.Enabled = true;
}

void ReturnToRecords(TimerControl &timer) {
  Module1->BarMode = face_records;
  timer.Enabled = false;
  frmRecords->Show();
}

void StoreOnTop(const MenuItem &entry) { SaveSetting(Setting::TopForm, entry.Checked() ? "1" : "0"); }

bool IsMenuKey(Integer key_code, Integer shift) {
  return key_code == key_menu || (key_code == key_f10 && (shift & shift_mask) != 0);
}

}  // namespace borvane
