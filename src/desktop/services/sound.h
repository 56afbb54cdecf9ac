#pragma once

#include <chrono>

#include "desktop/services/tone_player.h"
#include "desktop/services/tone_schedule.h"
#include "platform/sound.h"

namespace borvane {

/// The desktop's loudspeaker.
class DesktopSound final : public Sound {
 public:
  DesktopSound();
  /// With another way to the loudspeaker, and another limit for the wait for it.
  DesktopSound(OpenToneStream open, std::chrono::milliseconds wait);

  void Beep(std::int32_t frequency, std::int32_t duration) override;

 private:
  TonePlayer player_;
  ToneSchedule schedule_;
};

}  // namespace borvane
