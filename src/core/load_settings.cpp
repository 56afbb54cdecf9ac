#include "core/load_settings.h"

#include <cmath>

#include "alert/quake_log.h"
#include "bars/colors.h"
#include "basic/number.h"
#include "basic/text.h"
#include "core/program.h"
#include "records/frmRecords.h"
#include "settings/conffrm.h"
#include "settings/values.h"

namespace borvane {

namespace {

/// A stored check box: 0, 1 or 2; any other number leaves the box clear.
Integer CheckBoxValue(std::string_view text) {
  const double number = SaturatedPrefix(text);
  return number == 1 ? 1 : number == 2 ? 2 : 0;
}

/// The colour of a stored code. Any number, however large, that is not one of the codes is black.
Color StoredColor(std::string_view text) {
  const double number = SaturatedPrefix(text);
  if (number < -1 || number > 16)
    return ColorFromCode(-1);
  return ColorFromCode(RoundToInteger(number));
}

/// Sets `text` to the stored text, if there is one.
void LoadText(Setting setting, Property<std::string> &text) {
  const std::string stored = ReadSetting(setting);
  if (!stored.empty())
    text = stored;
}

void LoadClientIdentifier() {
  std::string identifier = ReadSetting(Setting::MacID);
  if (identifier.empty()) {
    identifier = MakeMacID();
    SaveSetting(Setting::MacID, identifier);
  }
  Module1->MacID = identifier;
}

void LoadGrid() {
  const bool on = SaturatedPrefix(ReadSetting(Setting::Grid)) != 0;
  frmRecords->mnuGrid.Checked = on;
  if (on)
    frmRecords->ListView1.GridLines = true;
}

void CountRun() {
  // Meant (run-beyond-sixteen-bits-ends-the-start): run 32768 should start like any other. The count overflows, and the
  // number of the run stays in 16 bits wherever it is read.
  Module1->RunCount = RoundToInteger(SaturatedPrefix(ReadSetting(Setting::RunTime)) + 1);
  SaveSetting(Setting::RunTime, IntegerText(Module1->RunCount));
}

void CountBanner() {
  // Meant (banner-shows-five-times): the banner's own words promise four shows; the count makes it five.
  constexpr double shows = 5;
  const double shown = SaturatedPrefix(ReadSetting(Setting::ad));
  if (shown < shows) {
    // A count below all numbers has no successor to store.
    if (std::isfinite(shown))
      SaveSetting(Setting::ad, InvariantText(shown + 1));
    Module1->ShowBanner = flag_true;
  }
}

void LoadBarSettings() {
  conffrm->Text7.Text = ReadSetting(Setting::EdgeOffset);

  // Meant (edge-option-without-button-ends-the-start): a stored number that no button has should leave the choice
  // alone. It is a subscript failure, which shows a damaged store instead of hiding it.
  const Integer edge_option = RoundToInteger(SaturatedPrefix(ReadSetting(Setting::EdgeDetect)));
  conffrm->Option1(edge_option).Value = true;

  // Meant (missing-colors-are-black): a colour that is not stored should keep the box's design value. It counts as code
  // 0, so that a box shows the same after every start until it is clicked.
  for (int i = 0; i < static_cast<int>(color_settings.size()); ++i)
    conffrm->Picture1(i).BackColor = StoredColor(ReadSetting(color_settings[static_cast<std::size_t>(i)]));

  conffrm->Check6.Value = CheckBoxValue(ReadSetting(Setting::KeepPosition));
}

void LoadLogSettings() {
  conffrm->Text8.Text = ReadSetting(Setting::LogCity);
  conffrm->Check1.Value = CheckBoxValue(ReadSetting(Setting::EnableLog));

  // Meant (log-option-false-restores-nothing): "False" should switch on the other option. It leaves both as they are,
  // and the settings window's timer chooses "All" when it is opened with the log on.
  if (ReadSetting(Setting::LogAll) == "True")
    conffrm->Option2(0).Value = true;
}

/// Moves the stored `noBother` by one step and returns 1 when it moves from 2 to 1.
Integer WalkNoBother() {
  // Meant (no-bother-has-no-effect): the step from 2 to 1 should raise a note to the user. Nothing acts on it; the
  // value is moved all the same, since stores that other runs have written go on with it.
  const double value = SaturatedPrefix(ReadSetting(Setting::noBother));
  if (value == 0) {
    SaveSetting(Setting::noBother, "2");
  } else if (value == 2) {
    SaveSetting(Setting::noBother, "1");
    return 1;
  }
  return 0;
}

void LoadAlarmSettings() {
  const std::string colorize = ReadSetting(Setting::Colorize);
  if (!colorize.empty())
    conffrm->Check3.Value = CheckBoxValue(colorize);

  LoadText(Setting::AlarmTone, conffrm->Text5(0).Text);
  LoadText(Setting::AlarmPeriod, conffrm->Text5(1).Text);

  const std::string sound = ReadSetting(Setting::EnableAlarmSound);
  if (!sound.empty())
    conffrm->Check2.Value = CheckBoxValue(sound);
}

void LoadArea() {
  LoadText(Setting::Area, conffrm->Combo2.Text);
  for (int position = 0; position < conffrm->Combo2.ListCount(); ++position) {
    if (conffrm->Combo2.List(position) == conffrm->Combo2.Text()) {
      Module1->AreaIndex = static_cast<std::uint8_t>(position);
      return;
    }
  }
}

void LoadRefreshSettings() {
  conffrm->Check7.Value = CheckBoxValue(ReadSetting(Setting::StartWOS));

  LoadText(Setting::Refresh, conffrm->Text2.Text);

  const std::string alert = ReadSetting(Setting::Alert);
  if (!alert.empty())
    conffrm->Text1.Text = alert;
  // Meant (bar-left-shows-alert-magnitude): the box "Bar Left" should show where the bar was. It shows the alert
  // magnitude, and nothing takes the bar's place from it at the start.
  conffrm->Text4.Text = alert;

  // Meant (values-read-or-written-alone): a value should have both a reader and a writer. Nothing writes this one, and
  // nothing reads smBarLeft, shortWidth and longWidth; they stay in the store for whoever reads it.
  conffrm->Text3.Text = ReadSetting(Setting::BarTop);
}

}  // namespace

Integer LoadSettings() {
  LoadClientIdentifier();

  // The first reference to conffrm: it loads here, hidden, and fills its list of areas.
  // Meant (list-position-beyond-sixteen-bits-ends-the-start): it should count as a position without an entry, which
  // yields an empty text. It is an overflow, like every number that is taken into 16 bits.
  const Integer display = RoundToInteger(SaturatedPrefix(ReadSetting(Setting::StrongerDisplay)));
  conffrm->Combo1.Text = conffrm->Combo1.List(display);

  // Meant (records-timer-keeps-design-interval): the first reference to frmRecords loads it, and its Load takes the
  // timer's interval from conffrm.Text2 before the stored text has reached that box. So a tick is 700 ms in every run.
  LoadGrid();

  CountRun();

  CountBanner();

  LoadBarSettings();
  LoadLogSettings();
  const Integer no_bother_result = WalkNoBother();
  LoadAlarmSettings();
  LoadArea();

  LoadRefreshSettings();

  InitLogPath();

  return no_bother_result;
}

std::string MakeMacID() {
  constexpr double largest = 999999;
  RandomSource &random = platform().random;
  random.Seed(platform().clock.SecondsSinceMidnight());
  return IntegerText(static_cast<std::int64_t>(std::floor(random.Next() * largest)) + 1);
}

}  // namespace borvane
