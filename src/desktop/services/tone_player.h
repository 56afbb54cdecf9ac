#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>

namespace borvane {

/// An open way to the loudspeaker: takes samples of one channel, ToneGenerator::rate of them a second.
class ToneStream {
 public:
  ToneStream() = default;
  ToneStream(const ToneStream &) = delete;
  ToneStream &operator=(const ToneStream &) = delete;
  virtual ~ToneStream() = default;

  /// Blocks while the stream has enough. Returns false when it has failed.
  virtual bool Write(std::span<const std::int16_t> samples) = 0;

  /// Blocks until everything has sounded. Returns false when the stream has failed.
  virtual bool Drain() = 0;
};

/// Opens the way to the loudspeaker; null when there is none. It may block for long.
using OpenToneStream = std::function<std::unique_ptr<ToneStream>()>;

/// A tone: its frequency in hertz, its length, and when its caller expects it to be over.
struct Tone {
  std::int32_t frequency = 0;
  std::chrono::milliseconds duration{0};
  std::chrono::steady_clock::time_point end;
};

/// Plays tones on a thread of its own, one stream for all tones that follow each other. Nothing ever waits for that
/// thread, but for a moment when a stream is being opened: a sound server may take its time, or all the time there is.
class TonePlayer {
 public:
  /// How long the first tone waits for its stream. An answer of a working server takes some milliseconds.
  static constexpr std::chrono::milliseconds longest_wait{200};

  explicit TonePlayer(OpenToneStream open, std::chrono::milliseconds wait = longest_wait);
  TonePlayer(const TonePlayer &) = delete;
  TonePlayer &operator=(const TonePlayer &) = delete;

  /// Leaves the thread to end when it can.
  ~TonePlayer();

  /// Opens a stream if there is none, and waits for it as long as the player was made for, at most. Does nothing where
  /// the system has no thread for it.
  void AwaitStream();

  /// Plays `tone` after those before it. Returns at once. While there is no stream the tone is left out.
  void Play(const Tone &tone);

 private:
  class Thread;

  std::chrono::milliseconds wait_;
  std::shared_ptr<Thread> thread_;
};

}  // namespace borvane
