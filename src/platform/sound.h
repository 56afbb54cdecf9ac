#pragma once

#include <cstdint>

namespace borvane {

/// The computer's loudspeaker.
class Sound {
 public:
  /// Sounds a tone of `frequency` hertz for `duration` milliseconds and returns when it is over. Without a device the
  /// time passes in silence. A duration of 0 or below passes at once.
  virtual void Beep(std::int32_t frequency, std::int32_t duration) = 0;

 protected:
  ~Sound() = default;
};

}  // namespace borvane
