#include "settings/conffrm.h"

#include "alert/quake_log.h"
#include "alert/sound_alarm.h"
#include "bars/Form1.h"
#include "bars/bar_content.h"
#include "bars/colors.h"
#include "bars/newTagFrm.h"
#include "bars/paint_bar.h"
#include "basic/number.h"
#include "core/program.h"
#include "core/program_info.h"
#include "core/registry.h"
#include "feed/area.h"
#include "records/frmRecords.h"
#include "settings/values.h"

namespace borvane {

namespace {

/// Stores a number with its leading blank.
void SaveNumber(Setting setting, int number) { SaveSetting(setting, InvariantText(static_cast<double>(number))); }

/// Shows the new colours on the bar that is up.
void RepaintBar() {
  if (Module1->BarMode == face_short_bar)
    UpdateShortBar();
  else if (Module1->BarMode == face_long_bar)
    PaintBar();
}

}  // namespace

// One line for each handler: it is easier to read in one piece.
// NOLINTNEXTLINE(readability-function-size)
SettingsForm::SettingsForm()
    : FormBase({.Name = "conffrm",
                .Caption = "Settings",
                .ClientWidth = 5790,
                .ClientHeight = 6030,
                .Border = BorderStyle::FixedDialog,
                .Start = StartPlace::MiddleOfFirstScreen}) {
  Combo2.Click = [this] { Combo2_Click(); };
  Text2.LostFocus = [this] { Text2_LostFocus(); };
  Text1.LostFocus = [this] { Text1_LostFocus(); };
  Check4.Click = [this] { Check4_Click(); };
  Text3.LostFocus = [this] { Text3_LostFocus(); };
  Text4.Change = [this] { Text4_Change(); };
  Check6.Click = [this] { Check6_Click(); };
  Check3.MouseUp = [this](const MouseState &) { Check3_MouseUp(); };
  for (int i = 0; i < Picture1.Count(); ++i) {
    Picture1(i).Click = [this, i] { Picture1_Click(i); };
    Picture1(i).MouseMove = [this, i](const MouseState &) { Picture1_MouseMove(i); };
  }
  Text7.LostFocus = [this] { Text7_LostFocus(); };
  Check1.Click = [this] { Check1_Click(); };
  for (int i = 0; i < Option2.Count(); ++i)
    Option2(i).Click = [this] { Option2_Click(); };
  Text8.LostFocus = [this] { Text8_LostFocus(); };
  Check7.Click = [this] { Check7_Click(); };
  Check2.MouseUp = [this](const MouseState &) { Check2_MouseUp(); };
  for (int i = 0; i < Text5.Count(); ++i)
    Text5(i).Change = [this, i] { Text5_Change(i); };
  for (int i = 0; i < Command1.Count(); ++i)
    Command1(i).Click = [this, i] { Command1_Click(i); };
  Combo1.Click = [this] { Combo1_Click(); };
  Command2.Click = [this] { Command2_Click(); };
  Timer1.Timer = [this] { Timer1_Timer(); };
  Inet1.StateChanged = [this] { Inet1_StateChanged(); };
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
    // Meant (heading-leads-to-the-coordinates): a heading should leave the chosen area alone. The emptied text makes
    // the next refresh take the page named by the coordinates; the stored area stays.
    Combo2.Text = "";
    return;
  }

  GetAreaUrl();
  SaveArea();
  // Meant (unreachable-threshold-ends-the-program): here at 32769 and beyond.
  Module1->RefreshCount = RoundToInteger(NumericPrefix(Text2.Text()) - 1);
}

void SettingsForm::Text2_LostFocus() { SaveSetting(Setting::Refresh, Text2.Text()); }

void SettingsForm::Text1_LostFocus() { SaveSetting(Setting::Alert, Text1.Text()); }

void SettingsForm::Check4_Click() {
  // Meant (coordinates-and-snapshot-last-one-run): the page chosen by its coordinates should be restored like the area
  // from the list. The box, its two numbers and "World Snapshot" are not stored.
  const bool by_position = Check4.Value() == 1;
  Text6(0).Enabled = by_position;
  Text6(1).Enabled = by_position;
  Label1(9).Enabled = by_position;
  Label1(10).Enabled = by_position;
}

void SettingsForm::Text3_LostFocus() {
  // Meant (bar-place-beyond-its-range-ends-the-program): a number that is too large should be refused when it is typed,
  // here and for the left edge and the offset beside "Move". It overflows when a bar is to go there, and no trap holds
  // that.
  // Meant (leaving-bar-top-moves-the-bar): a box in which nothing was typed should move nothing. The keyboard's passing
  // is enough; an empty box puts the bar at the top.
  if (Module1->BarMode == face_long_bar)
    newTagFrm->Top = SinglePrefix(Text3.Text());
  else if (Module1->BarMode == face_short_bar)
    Form1->Top = SinglePrefix(Text3.Text());
}

void SettingsForm::Text4_Change() {
  if (Module1->BarMode != face_short_bar)
    return;
  Form1->Left = SinglePrefix(Text4.Text());
  SaveSetting(Setting::smBarLeft, Text4.Text());
}

void SettingsForm::Check6_Click() { SaveNumber(Setting::KeepPosition, Check6.Value()); }

void SettingsForm::Check3_MouseUp() {
  // Meant (two-boxes-act-on-the-mouse-alone): a tick by the keyboard should count like a click, here and for the sound.
  // It changes the box until the program ends; nothing is stored, and no bar is painted.
  SaveNumber(Setting::Colorize, Check3.Value());
  RepaintBar();
}

void SettingsForm::Picture1_Click(int i) {
  // Meant (color-codes-start-at-zero): the first click should go on from the colour on show. The codes of a run start
  // at 0, and the pointer over a box shows its code, not that of its stored colour.
  Integer &code = Module1->ColorCodes[static_cast<std::size_t>(i)];

  // Meant (code-sixteen-is-black): the codes should begin again after 15, the last one of the table. 16 comes, too, and
  // is black like 0, so that black shows twice.
  constexpr int last_code = 16;
  code = code >= last_code ? Integer(0) : code + 1;

  Picture1(i).BackColor = ColorFromCode(code);
  Label1(14).Caption = IntegerText(code);
  SaveNumber(color_settings[static_cast<std::size_t>(i)], code);
  if (Check3.Value() == 1)
    RepaintBar();
}

void SettingsForm::Picture1_MouseMove(int i) {
  Label1(14).Caption = IntegerText(Module1->ColorCodes[static_cast<std::size_t>(i)]);
}

void SettingsForm::Text7_LostFocus() { SaveSetting(Setting::EdgeOffset, Text7.Text()); }

void SettingsForm::Check1_Click() {
  const bool is_logging = Check1.Value() == 1;
  Option2(0).Enabled = is_logging;
  Option2(1).Enabled = is_logging;
  Text8.Enabled = is_logging;
  SaveNumber(Setting::EnableLog, Check1.Value());
  AllowClose();
}

void SettingsForm::Option2_Click() { AllowClose(); }

/// "Close" can be pressed unless the log is on and nothing says what goes into it.
void SettingsForm::AllowClose() { Command2.Enabled = Check1.Value() != 1 || Option2(0).Value() != Option2(1).Value(); }

void SettingsForm::Text8_LostFocus() { SaveSetting(Setting::LogCity, Text8.Text()); }

void SettingsForm::Check7_Click() {
  SaveNumber(Setting::StartWOS, Check7.Value());
  if (Check7.Value() == 1)
    WriteStartEntry();
  else
    platform().settings.Delete(run_key, program_title);
}

void SettingsForm::WriteStartEntry() {
  Process &process = platform().process;
  std::string program = process.Folder();
  program += path_separator;
  program += process.ExecutableName();
  program += executable_suffix;
  SaveRegValue(HKEY_CURRENT_USER, run_key, program_title, program);
}

void SettingsForm::Check2_MouseUp() {
  // Meant (sound-label-waits-for-the-mouse): the label should show at the start that the stored sound is on. It says
  // "Disabled" until the box is clicked.
  Label2.Caption = Check2.Value() == 1 ? "Enabled" : "Disabled";
  SaveSetting(Setting::EnableAlarmSound, IntegerText(Check2.Value()));
}

void SettingsForm::Text5_Change(int i) {
  SaveSetting(i == 0 ? Setting::AlarmTone : Setting::AlarmPeriod, Text5(i).Text());
}

void SettingsForm::Command1_Click(int i) {
  if (i == 0) {
    SoundAlarm();
    return;
  }
  Text5(0).Text = "10";
  Text5(1).Text = "7";
}

void SettingsForm::Combo1_Click() { SaveSetting(Setting::StrongerDisplay, IntegerText(Combo1.ListIndex())); }

void SettingsForm::Command2_Click() {
  Timer1.Enabled = false;

  // Meant (close-compares-no-area): the toolbar button's own release looks whether the area has changed. Releasing it
  // from here does not.
  // Meant (close-repaints-the-other-bar): each bar should show the new colours. The calls are crossed: the bar that is
  // up keeps its colours until its next update, and the other one is loaded, with all that its load does: from then on
  // it counts as the bar that is up.
  // Meant (settings-button-stays-down-beside-a-bar): the toolbar's button should be up once the settings are hidden. It
  // is released only where the records window is up.
  if (Module1->BarMode == face_records)
    frmRecords->Toolbar1.Buttons(RecordsForm::button_settings).Value = 0;
  else if (Module1->BarMode == face_short_bar)
    PaintBar();
  else
    UpdateShortBar();

  SaveSetting(Setting::LogAll, Option2(0).Value() ? "True" : "False");

  if (Check1.Value() == 1 && frmRecords->ListView1.ListItems.Count() >= 1) {
    WriteQuakeLog();
    InitLogPath();
  }

  for (int position = 0; position < Option1.Count(); ++position) {
    if (Option1(position).Value())
      SaveNumber(Setting::EdgeDetect, position);
  }

  Hide();
}

void SettingsForm::Timer1_Timer() {
  if (Check1.Value() != 1)
    return;
  if (!Option2(0).Value() && !Option2(1).Value())
    Option2(0).Value = true;
  Timer1.Enabled = false;
}

void SettingsForm::Inet1_StateChanged() {
  // Whoever made the request learns of its end from OpenURL.
}

}  // namespace borvane
