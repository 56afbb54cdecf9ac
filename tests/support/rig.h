#pragma once

#include <deque>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "controls/buttons.h"
#include "controls/combo_box.h"
#include "controls/text_box.h"
#include "controls/timer.h"
#include "controls/toolbar.h"
#include "core/program.h"
#include "support/fake_clock.h"
#include "support/fake_files.h"
#include "support/fake_http.h"
#include "support/fake_message_box.h"
#include "support/fake_process.h"
#include "support/fake_pump.h"
#include "support/fake_random.h"
#include "support/fake_region.h"
#include "support/fake_shell.h"
#include "support/fake_sound.h"
#include "support/fake_store.h"
#include "support/trace.h"
#include "support/traced_properties.h"
#include "support/traced_screen.h"

namespace borvane {

/// A fresh program on fake services, and the user, the network and the clock around it. Whatever comes from outside
/// enters through Dispatch, and what the program asks of its host is recorded in one trace.
class Rig {
 public:
  using Event = std::function<void()>;

  Rig();
  Rig(const Rig &) = delete;
  Rig &operator=(const Rig &) = delete;

  /// Starts the program.
  void start();

  /// Any event from outside. When it ends the process, the test continues after it; see end_status().
  void happen(const Event &event);

  // The network.

  /// Answers every request of `address` with `page`, at the wait with that number.
  void serve(std::string_view address, std::string_view page, int waits = 1) { http_.Serve(address, page, waits); }
  void refuse(std::string_view address) { http_.Refuse(address); }

  /// Leaves requests of `address` without an answer until it is served or the 60 seconds have passed.
  void hold(std::string_view address) { http_.Hold(address); }

  /// The same, and a cancelled request does not end either.
  void hold_stubbornly(std::string_view address) { http_.HoldStubbornly(address); }

  // What happens while the program processes events or waits for an answer.

  void during_next_pump(Event event) { pump_.InPump(1, std::move(event)); }
  void during_pump(int number, Event event) { pump_.InPump(number, std::move(event)); }
  void during_request(std::string_view address, Event event) { pump_.DuringRequest(address, std::move(event)); }

  // The user and the timers.

  void press(Toolbar &toolbar, int button);
  void key(int code, int shift = 0);
  void click(Control &control);
  void choose(ComboBox &box, std::string_view entry);
  void tick_off(CheckBox &box, int value);
  void type(TextBox &box, std::string_view text);
  void enter(Control &control);
  void leave(Control &control);
  void move_mouse(float x, float y);

  /// The pointer moves over a control, or the left button is released on it.
  void move_mouse_over(Control &control);
  void release_mouse_on(Control &control);

  /// The period of `timer` passes `times` times.
  void tick(TimerControl &timer, int times = 1);

  // What is seen.

  const Lines &trace() const { return trace_.All(); }

  /// The lines of the trace that begin with one of `words`.
  Lines trace(std::initializer_list<std::string_view> words) const { return trace_.Of(words); }
  void clear_trace() { trace_.Clear(); }

  /// Adds to the trace: "set NAME=…" at each change of `property`, which belongs to `owner`.
  template <class T>
  void watch(PropertyOwner &owner, const Property<T> &property, std::string name) {
    WatcherOf(owner).Add(property, std::move(name));
  }

  /// Adds to the trace: "rows NAME 1 added" and the like.
  void watch_rows(ListView &list, std::string name) { row_watchers_.emplace_back(trace_, list, std::move(name)); }

  /// A line of the test's own.
  void note(std::string line) { trace_.Add(std::move(line)); }

  /// The status with which the process has ended; nothing while it runs.
  std::optional<int> end_status() const { return end_status_; }

  FakeStore &store() { return store_; }
  FakeHttp &http() { return http_; }
  FakeClock &clock() { return clock_; }
  FakeRandom &random() { return random_; }
  FakeFiles &files() { return files_; }
  FakeRegion &region() { return region_; }
  FakeProcess &process() { return process_; }
  FakeMessageBox &message_box() { return message_box_; }
  TracedScreen &screen() { return screen_; }

 private:
  TracedProperties &WatcherOf(PropertyOwner &owner);

  Trace trace_;
  FakeStore store_{trace_};
  FakeClock clock_;
  FakeHttp http_{trace_, clock_};
  FakePump pump_{trace_, http_};
  FakeRandom random_{trace_};
  FakeMessageBox message_box_{trace_};
  FakeShell shell_{trace_};
  FakeFiles files_{trace_};
  FakeSound sound_{trace_};
  FakeRegion region_;
  FakeProcess process_{trace_};
  TracedScreen screen_{trace_};
  std::map<PropertyOwner *, std::unique_ptr<TracedProperties>> property_watchers_;
  std::deque<TracedRows> row_watchers_;
  int depth_ = 0;
  std::optional<int> end_status_;
  Program program_;
};

}  // namespace borvane
