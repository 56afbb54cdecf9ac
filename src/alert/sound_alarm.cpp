#include "alert/sound_alarm.h"

#include <cstdint>

#include "basic/number.h"
#include "core/program.h"
#include "settings/conffrm.h"

namespace borvane {

namespace {

constexpr std::int32_t lowest_frequency = 100;
constexpr std::int32_t highest_frequency = 1000;
constexpr std::int32_t frequency_step = 10;

Integer WholeNumberOf(TextBox &box) { return RoundToInteger(NumericPrefix(box.Text())); }

}  // namespace

void SoundAlarm() {
  // Meant (alarm-settings-beyond-sixteen-bits-end-the-program): a number that is too large should be refused when it is
  // typed. It is read only here, outside every trap.
  const Integer sweeps = WholeNumberOf(conffrm->Text5(1));
  const Integer milliseconds = WholeNumberOf(conffrm->Text5(0));

  for (int sweep = 1; sweep <= sweeps; ++sweep) {
    for (std::int32_t frequency = lowest_frequency; frequency <= highest_frequency; frequency += frequency_step) {
      platform().sound.Beep(frequency, milliseconds);
      platform().events.LetEventsRun();
    }
    platform().events.LetEventsRun();
  }
}

}  // namespace borvane
