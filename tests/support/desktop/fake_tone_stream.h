#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "desktop/services/tone_player.h"
#include "support/trace.h"

namespace borvane {

/// A loudspeaker that keeps what it is given, and can be made to fail. The test shares it with the player's thread.
struct FakeLoudspeaker {
  std::mutex mutex;
  std::condition_variable changed;
  Lines log;  // "open", "write 480", "drain", "close"
  std::vector<std::int16_t> samples;
  bool is_missing = false;  // nothing can be opened
  bool answers = true;      // without an answer, opening blocks
  int writes_until_failure = -1;
  bool takes_samples = true;  // otherwise, writing blocks
  bool drains = true;         // otherwise, draining fails

  void Note(const std::string &line) {
    log.push_back(line);
    changed.notify_all();
  }

  void Set(bool FakeLoudspeaker::*flag, bool value) {
    const std::scoped_lock lock(mutex);
    this->*flag = value;
    changed.notify_all();
  }

  /// Waits until the log has that line so many times; false when that never comes.
  bool AwaitLine(const std::string &line, int times = 1) {
    std::unique_lock lock(mutex);
    return changed.wait_for(lock, std::chrono::seconds(20),
                            [&] { return std::count(log.begin(), log.end(), line) >= times; });
  }

  /// How many times the log has that line.
  int CountOf(const std::string &line) {
    const std::scoped_lock lock(mutex);
    return static_cast<int>(std::count(log.begin(), log.end(), line));
  }

  Lines Log() {
    const std::scoped_lock lock(mutex);
    return log;
  }

  std::vector<std::int16_t> Samples() {
    const std::scoped_lock lock(mutex);
    return samples;
  }
};

class FakeToneStream final : public ToneStream {
 public:
  explicit FakeToneStream(std::shared_ptr<FakeLoudspeaker> speaker) : speaker_(std::move(speaker)) {}

  ~FakeToneStream() override {
    const std::scoped_lock lock(speaker_->mutex);
    speaker_->Note("close");
  }

  bool Write(std::span<const std::int16_t> samples) override {
    std::unique_lock lock(speaker_->mutex);
    if (!speaker_->takes_samples)
      speaker_->Note("block");
    speaker_->changed.wait(lock, [this] { return speaker_->takes_samples; });
    if (speaker_->writes_until_failure-- == 0) {
      speaker_->Note("fail");
      return false;
    }
    speaker_->samples.insert(speaker_->samples.end(), samples.begin(), samples.end());
    speaker_->Note("write " + std::to_string(samples.size()));
    return true;
  }

  bool Drain() override {
    const std::scoped_lock lock(speaker_->mutex);
    speaker_->Note("drain");
    return speaker_->drains;
  }

 private:
  std::shared_ptr<FakeLoudspeaker> speaker_;
};

/// The way to `speaker`.
inline OpenToneStream WayTo(const std::shared_ptr<FakeLoudspeaker> &speaker) {
  return [speaker]() -> std::unique_ptr<ToneStream> {
    std::unique_lock lock(speaker->mutex);
    speaker->Note("open");
    speaker->changed.wait(lock, [&] { return speaker->answers; });
    if (speaker->is_missing) {
      speaker->Note("missing");
      return nullptr;
    }
    return std::make_unique<FakeToneStream>(speaker);
  };
}

}  // namespace borvane
