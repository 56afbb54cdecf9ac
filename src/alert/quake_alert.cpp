#include "alert/quake_alert.h"

#include "alert/alert_time.h"
#include "alert/frmQalert.h"
#include "basic/failure.h"
#include "basic/number.h"
#include "core/program.h"

namespace borvane {

namespace {

/// The whole part of a random number from 0 up to, and without, `limit`.
int RandomBelow(int limit) { return static_cast<int>(platform().random.Next() * limit); }

/// Whether the event calls for an alert. Raises a type mismatch when its time or `LastAlertTime` is no date.
bool CallsForAlert(EventFields &fields, Date event_time) {
  if (Module1->LastAlertTime.empty())
    Module1->LastAlertTime = FirstAlertTime(platform().clock.Now());
  Module1->LastAlertTime = FormatDate(Module1->LastAlertTime, "mm/dd/yyyy hh:mm:ss ampm");

  if (SinglePrefix(fields(1)) < Module1->AlertThreshold)
    return false;

  // Meant (newer-events-never-alert): the newer event should alert. It is the one that is more than a second older than
  // the start of the program.
  return DateValue(Module1->LastAlertTime).seconds - event_time.seconds > 1;
}

void ShowAlert(EventFields &fields) {
  frmQalert->Label2.Caption = "";
  frmQalert->Show();
  frmQalert->Timer1.Enabled = true;
  frmQalert->Label1.Caption = fields(1);
  platform().events.LetEventsRun();
  ShakeQuakeAlert();
}

/// The first slot from 13 to 20 that ends with a comma; 0 when an empty slot or the last one comes before it. Raises a
/// subscript failure at the end of a shorter array.
int SlotOfPlace(EventFields &fields) {
  constexpr int first_slot = 13;
  constexpr int last_slot = 20;
  for (int slot = first_slot; slot <= last_slot && !fields(slot).empty(); ++slot) {
    if (fields(slot).ends_with(','))
      return slot;
  }
  return 0;
}

/// Adds the place to the popup, and takes the event into account.
void ShowPlace(EventFields &fields, int slot, Date event_time) {
  constexpr float strong_magnitude = 7.0F;
  constexpr Color red = 0x0000FF;
  const std::string place(fields(slot).substr(0, fields(slot).size() - 1));
  frmQalert->Label2.Caption = frmQalert->Label2.Caption() + " " + place;
  frmQalert->Label1.ForeColor = SinglePrefix(fields(1)) >= strong_magnitude ? red : color_highlight_text;
  Module1->LastAlertTime = DateText(event_time);
}

/// How far the popup jumps along one axis, in twips: up to 49 to either side.
float RandomJump() {
  constexpr int jump_limit = 50;
  const int distance = RandomBelow(jump_limit);
  const bool backwards = RandomBelow(2) == 0;
  return static_cast<float>(backwards ? -distance : distance);
}

}  // namespace

void CheckEventAlert(EventFields &fields) {
  try {
    const Date event_time = EventTime(fields(2), fields(3));
    if (!CallsForAlert(fields, event_time))
      return;

    ShowAlert(fields);

    // Meant (alert-repeats-at-every-refresh): no scanner fills the slots from 13 on, so that the place is never shown
    // and the event never taken into account. It alerts again at the next refresh.
    const int slot = SlotOfPlace(fields);
    if (slot != 0)
      ShowPlace(fields, slot, event_time);
  } catch (const RuntimeError &) {
    // The event raises no alert, or no further one; the scan goes on.
  }
}

void ShakeQuakeAlert() {
  constexpr int steps_limit = 600;
  constexpr int milliseconds_per_step = 10;

  platform().random.Seed(platform().clock.SecondsSinceMidnight());
  const int steps = RandomBelow(steps_limit);
  for (int step = 0; step < steps; ++step) {
    const float down = RandomJump();
    const float right = RandomJump();
    // Meant (shaking-brings-back-a-closed-popup): a popup that the user closes meanwhile should stay closed. Each step
    // names it, which loads it again; it is hidden then, and wanders unseen.
    frmQalert->Top = frmQalert->Top() + down;
    frmQalert->Left = frmQalert->Left() + right;
    // Meant (refresh-inside-the-shaking): a refresh should not start in the middle of a scan. It runs whole, and the
    // scan around it then adds its further rows to the new ones.
    platform().events.LetEventsRunFor(milliseconds_per_step);
    frmQalert->Repaint();
  }
}

}  // namespace borvane
