#include "desktop/services/tone_player.h"

#include <algorithm>
#include <array>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include "desktop/services/tone_generator.h"
#include "desktop/services/tone_schedule.h"

namespace borvane {

using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

/// What the player and its thread share. The thread keeps it alive, also after the player.
class TonePlayer::Thread : public std::enable_shared_from_this<TonePlayer::Thread> {
 public:
  explicit Thread(OpenToneStream open) : open_(std::move(open)) {}

  void AwaitStream(milliseconds wait) {
    std::unique_lock lock(mutex_);
    if (state_ != State::Closed)
      return;
    state_ = State::Opening;
    try {
      std::thread([self = shared_from_this()] { self->Run(); }).detach();
    } catch (const std::system_error &) {
      // The user may have no more threads. The tone passes in silence, and the next one tries again.
      state_ = State::Closed;
      return;
    }
    changed_.wait_for(lock, wait, [this] { return state_ != State::Opening; });
  }

  void Play(const Tone &tone) {
    constexpr std::size_t most_tones_waiting = 1'000;
    const std::scoped_lock lock(mutex_);
    // A server that has stopped must not let the tones pile up.
    if (state_ != State::Open || tones_.size() >= most_tones_waiting)
      return;
    tones_.push_back(tone);
    changed_.notify_all();
  }

  void Abandon() {
    const std::scoped_lock lock(mutex_);
    is_abandoned_ = true;
    changed_.notify_all();
  }

 private:
  enum class State { Closed, Opening, Open };
  enum class AtTimeout { StayOpen, Close };

  void Run() {
    // So long after the last tone the stream ends. It is longer than what runs between two tones usually takes.
    constexpr milliseconds longest_pause{500};

    std::unique_ptr<ToneStream> stream = open_();
    {
      const std::scoped_lock lock(mutex_);
      state_ = State::Open;
      changed_.notify_all();
    }

    ToneGenerator generator;
    bool has_sounded = false;
    auto end = steady_clock::now();
    while (true) {
      std::optional<Tone> tone = Next(end + ToneSchedule::longest_made_up_pause, AtTimeout::StayOpen);
      if (!tone) {
        // The first tone may be late: the stream was opened for it and has nothing to fade yet.
        if (has_sounded && stream != nullptr && !(Fade(*stream, generator) && stream->Drain()))
          stream.reset();
        tone = Next(end + longest_pause, AtTimeout::Close);
      }
      if (!tone)
        return;
      // Without a stream, or when it has failed, the tones pass in silence.
      if (stream != nullptr && !Write(*stream, generator, *tone))
        stream.reset();
      has_sounded = true;
      end = tone->end;
    }
  }

  /// The next tone; none when `timeout` has come before it.
  std::optional<Tone> Next(steady_clock::time_point timeout, AtTimeout at_timeout) {
    std::unique_lock lock(mutex_);
    changed_.wait_until(lock, timeout, [this] { return is_abandoned_ || !tones_.empty(); });
    if (!is_abandoned_ && !tones_.empty()) {
      const Tone tone = tones_.front();
      tones_.pop_front();
      return tone;
    }
    if (at_timeout == AtTimeout::Close)
      state_ = State::Closed;
    return std::nullopt;
  }

  /// Whether a tone should have been over long ago: a server that has stalled must not sound an alarm when it goes on.
  static bool IsOver(const Tone &tone) {
    constexpr seconds longest_delay{2};
    return steady_clock::now() > tone.end + longest_delay;
  }

  bool Write(ToneStream &stream, ToneGenerator &generator, const Tone &tone) {
    constexpr std::int64_t most_samples_at_once = 4'800;
    std::array<std::int16_t, most_samples_at_once> samples{};
    std::int64_t left = tone.duration.count() * ToneGenerator::samples_per_millisecond;
    while (left > 0 && !IsAbandoned() && !IsOver(tone)) {
      const std::span part(samples.data(), static_cast<std::size_t>(std::min(left, most_samples_at_once)));
      generator.Generate(tone.frequency, part);
      if (!stream.Write(part))
        return false;
      left -= static_cast<std::int64_t>(part.size());
    }
    return true;
  }

  /// The last tone would end with a click.
  static bool Fade(ToneStream &stream, ToneGenerator &generator) {
    constexpr std::size_t milliseconds_of_fading = 5;
    std::array<std::int16_t, milliseconds_of_fading * ToneGenerator::samples_per_millisecond> samples{};
    generator.Fade(samples);
    return stream.Write(samples);
  }

  bool IsAbandoned() {
    const std::scoped_lock lock(mutex_);
    return is_abandoned_;
  }

  const OpenToneStream open_;
  std::mutex mutex_;
  std::condition_variable changed_;
  State state_ = State::Closed;
  std::deque<Tone> tones_;
  bool is_abandoned_ = false;
};

TonePlayer::TonePlayer(OpenToneStream open, milliseconds wait)
    : wait_(wait), thread_(std::make_shared<Thread>(std::move(open))) {}

TonePlayer::~TonePlayer() { thread_->Abandon(); }

void TonePlayer::AwaitStream() { thread_->AwaitStream(wait_); }

void TonePlayer::Play(const Tone &tone) { thread_->Play(tone); }

}  // namespace borvane
