#include "bars/bar_place.h"

#include "bars/Form1.h"
#include "bars/bar_actions.h"
#include "bars/newTagFrm.h"
#include "basic/number.h"
#include "basic/text.h"
#include "controls/key_codes.h"
#include "settings/conffrm.h"

namespace borvane {

namespace {

bool KeepsPlaces() { return conffrm->Check6.Value() == 1; }

bool IsStoredOnTop() { return NumericPrefix(ReadSetting(Setting::TopForm)) != 0; }

/// How long a tick of a bar's timer is.
std::int32_t TickLength() {
  // Meant (bars-tick-by-the-refresh-box): the bars should have a period of their own. The box of the refresh threshold
  // gives it in milliseconds, so that 0 stops their timers.
  return RoundToLong(NumericPrefix(conffrm->Text2.Text()));
}

/// Moves an edge of a bar to where it is stored, if it is.
void RestoreEdge(Position &edge, Setting setting) {
  const std::string stored = ReadSetting(setting);
  if (!stored.empty())
    edge = SinglePrefix(stored);
}

void StoreEdge(Setting setting, float twips) { SaveSetting(setting, Trim(InvariantText(twips))); }

}  // namespace

void PlaceShortBar() {
  constexpr float first_left = 50;
  ShortBarForm &bar = *Form1;
  bar.mnuTop.Checked = IsStoredOnTop();
  bar.Top = SinglePrefix(conffrm->Text3.Text());
  bar.Left = first_left;
  bar.Timer1.Interval = TickLength();
  if (KeepsPlaces()) {
    RestoreEdge(bar.Top, Setting::shortTop);
    RestoreEdge(bar.Left, Setting::shortLeft);
  }
}

void PlaceLongBar() {
  LongBarForm &bar = *newTagFrm;
  bar.mnuTop.Checked = IsStoredOnTop();
  bar.Top = SinglePrefix(conffrm->Text3.Text());
  bar.Picture1.Width = bar.Width() - 450;
  bar.Check1.Left = bar.Width() - bar.Check1.Width() - 50;
  bar.Timer1.Interval = TickLength();
  if (KeepsPlaces()) {
    RestoreEdge(bar.Top, Setting::longTop);
    RestoreEdge(bar.Left, Setting::longLeft);
  }
}

bool MoveByKey(FormBase &bar, Integer key_code) {
  const float screen_width = current->host().FirstScreen().width;
  switch (key_code) {
    case key_up:
      bar.Top = bar.Top() - key_step;
      return true;
    case key_down:
      bar.Top = bar.Top() + key_step;
      return true;
    case key_left:
      bar.Left = bar.Left() - key_step;
      return true;
    case key_right:
      bar.Left = bar.Left() + key_step;
      return true;
    case 'C':
      bar.Left = screen_width / 2 - bar.Width() / 2;
      return true;
    case 'L':
      bar.Left = 0;
      return true;
    case 'R':
      bar.Left = screen_width - bar.Width();
      return true;
    case 'W':
      OpenHomePage(bar);
      return true;
    default:
      return false;
  }
}

void KeepPlace(const FormBase &bar, const PlaceSettings &settings) {
  if (!KeepsPlaces())
    return;
  StoreEdge(settings.top, bar.Top());
  StoreEdge(settings.left, bar.Left());
  StoreEdge(settings.width, bar.Width());
}

}  // namespace borvane
