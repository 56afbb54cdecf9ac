#include "desktop/services/sound.h"

#include <chrono>
#include <thread>
#include <utility>

#include "desktop/services/pulse_stream.h"

namespace borvane {

DesktopSound::DesktopSound() : DesktopSound([] { return OpenPulseStream(); }, TonePlayer::longest_wait) {}

DesktopSound::DesktopSound(OpenToneStream open, std::chrono::milliseconds wait) : player_(std::move(open), wait) {}

void DesktopSound::Beep(std::int32_t frequency, std::int32_t duration) {
  if (duration <= 0)
    return;
  player_.AwaitStream();
  const std::chrono::milliseconds length(duration);
  const auto end = schedule_.EndOf(std::chrono::steady_clock::now(), length);
  player_.Play({.frequency = frequency, .duration = length, .end = end});
  std::this_thread::sleep_until(end);
}

}  // namespace borvane
