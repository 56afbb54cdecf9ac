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

/// By how much each press of a key changes the place of a bar or its width, in twips.
constexpr float key_step = 50;

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
  // Meant (bar-place-beyond-its-range-ends-the-program): here whenever a bar is loaded, and for its stored place.
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

void MoveByKey(FormBase &bar, Integer key_code) {
  const float screen_width = current->host().FirstScreen().width;
  switch (key_code) {
    case key_up:
      bar.Top = bar.Top() - key_step;
      break;
    case key_down:
      bar.Top = bar.Top() + key_step;
      break;
    case key_left:
      bar.Left = bar.Left() - key_step;
      break;
    case key_right:
      bar.Left = bar.Left() + key_step;
      break;
    case 'C':
      bar.Left = screen_width / 2 - bar.Width() / 2;
      break;
    case 'L':
      bar.Left = 0;
      break;
    case 'R':
      bar.Left = screen_width - bar.Width();
      break;
    case 'W':
      OpenHomePage(bar);
      break;
    default:
      break;
  }
}

bool ChangeWidthByKey(FormBase &bar, PictureBox &box, std::initializer_list<Control *> at_end, Integer key_code) {
  if (key_code != 'S' && key_code != 'E')
    return false;
  const float change = key_code == 'S' ? -key_step : key_step;
  // Meant (smallest-bar-stays): a width below 0 should be refused like any other, which ends the program. A key that is
  // pressed again and again would always end there; the bar stays as small as it is.
  if (box.Width() + change < 0)
    return true;
  bar.Width = bar.Width() + change;
  box.Width = box.Width() + change;
  for (Control *control : at_end)
    control->Left = control->Left() + change;
  return true;
}

void KeepPlace(const FormBase &bar, const PlaceSettings &settings) {
  if (!KeepsPlaces())
    return;
  StoreEdge(settings.top, bar.Top());
  StoreEdge(settings.left, bar.Left());
  StoreEdge(settings.width, bar.Width());
}

}  // namespace borvane
