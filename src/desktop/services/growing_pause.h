#pragma once

#include <algorithm>
#include <chrono>
#include <utility>

namespace borvane {

/// The pauses between tries: the first one as long as given, each further one twice as long as the one before, up to
/// the longest.
class GrowingPause {
 public:
  GrowingPause(std::chrono::milliseconds first, std::chrono::milliseconds longest)
      : first_(first), longest_(longest), next_(first) {}

  /// The next pause.
  std::chrono::milliseconds Next() { return std::exchange(next_, std::min(2 * next_, longest_)); }

  /// Begins again with the first pause, after a success.
  void Reset() { next_ = first_; }

 private:
  std::chrono::milliseconds first_;
  std::chrono::milliseconds longest_;
  std::chrono::milliseconds next_;
};

}  // namespace borvane
