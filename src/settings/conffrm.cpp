#include "settings/conffrm.h"

#include "alert/quake_log.h"
#include "basic/number.h"
#include "core/program.h"
#include "feed/area.h"
#include "records/frmRecords.h"
#include "settings/values.h"

namespace borvane {

SettingsForm::SettingsForm()
    : FormBase({.Name = "conffrm",
                .Caption = "Settings",
                .ClientWidth = 5790,
                .ClientHeight = 6030,
                .Border = BorderStyle::FixedDialog}) {
  Combo2.Click = [this] { Combo2_Click(); };
  Check4.Click = [this] { Check4_Click(); };
  Text1.LostFocus = [this] { Text1_LostFocus(); };
  Text2.LostFocus = [this] { Text2_LostFocus(); };
  Command2.Click = [this] { Command2_Click(); };
}

void SettingsForm::Form_Load() {
  for (const Area &area : areas)
    Combo2.AddItem(area.text);
}

void SettingsForm::Form_QueryUnload(Integer &cancel, UnloadMode mode) {
  if (mode == UnloadMode::Code)
    return;

  // The live settings must not go with the window: its close box does what "Close" does.
  cancel = 1;
  if (Command2.Enabled())
    Command2_Click();
}

void SettingsForm::Combo2_Click() {
  const bool is_heading = Combo2.Text().starts_with('*');
  if (is_heading) {
    Combo2.Text = "";
    return;
  }

  GetAreaUrl();
  SaveArea();
  Module1->RefreshCount = RoundToInteger(NumericPrefix(Text2.Text()) - 1);
}

void SettingsForm::Check4_Click() {
  const bool by_position = Check4.Value() == 1;
  Text6(0).Enabled = by_position;
  Text6(1).Enabled = by_position;
  Label1(9).Enabled = by_position;
  Label1(10).Enabled = by_position;
}

void SettingsForm::Text1_LostFocus() { SaveSetting(Setting::Alert, Text1.Text()); }

void SettingsForm::Text2_LostFocus() { SaveSetting(Setting::Refresh, Text2.Text()); }

void SettingsForm::Command2_Click() {
  Timer1.Enabled = false;

  // Meant (close-compares-no-area): the toolbar button's own release looks whether the area has changed. Releasing it
  // from here does not.
  if (Module1->BarMode == 0)
    frmRecords->Toolbar1.Buttons(2).Value = 0;

  SaveSetting(Setting::LogAll, Option2(0).Value() ? "True" : "False");

  if (Check1.Value() == 1 && frmRecords->ListView1.ListItems.Count() >= 1) {
    WriteQuakeLog();
    InitLogPath();
  }

  for (int position = 0; position < Option1.Count(); ++position) {
    if (Option1(position).Value())
      SaveSetting(Setting::EdgeDetect, InvariantText(static_cast<double>(position)));
  }

  Hide();
}

}  // namespace borvane
