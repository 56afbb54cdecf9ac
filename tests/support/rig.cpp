#include "support/rig.h"

#include <gtest/gtest.h>

#include "core/dispatch.h"
#include "core/start.h"
#include "records/frmRecords.h"

namespace borvane {

Rig::Rig()
    : program_({store_, http_, pump_, clock_, random_, message_box_, shell_, files_, sound_, region_, process_},
               screen_) {}

void Rig::happen(const Event &event) {
  if (end_status_.has_value()) {
    ADD_FAILURE() << "an event after the end of the process";
    return;
  }
  // An event inside another, from a pump, passes the end of the process on to the outermost.
  ++depth_;
  try {
    Dispatch(event);
    --depth_;
  } catch (const ProcessEnded &end) {
    if (--depth_ > 0)
      throw;
    end_status_ = end.status;
  }
}

void Rig::start() { happen(Main); }

void Rig::press(Toolbar &toolbar, int button) {
  happen([&] { toolbar.Press(button); });
}

void Rig::key(int code, int shift) {
  happen([&] { frmRecords->Form_KeyUp(code, shift); });
}

void Rig::click(Control &control) {
  happen([&] { control.Click.Raise(); });
}

void Rig::choose(ComboBox &box, std::string_view entry) {
  for (int position = 0; position < box.ListCount(); ++position) {
    if (box.List(position) == entry) {
      happen([&] { box.Select(position); });
      return;
    }
  }
  ADD_FAILURE() << "there is no entry \"" << entry << "\"";
}

void Rig::tick_off(CheckBox &box, int value) {
  happen([&] { box.Value = value; });
}

void Rig::type(TextBox &box, std::string_view text) {
  happen([&] { box.Text = text; });
}

void Rig::enter(Control &control) {
  happen([&] { control.GotFocus.Raise(); });
}

void Rig::leave(Control &control) {
  happen([&] { control.LostFocus.Raise(); });
}

void Rig::move_mouse(float x, float y) {
  happen([&] { frmRecords->Form_MouseMove({.button = 0, .shift = 0, .x = x, .y = y}); });
}

void Rig::move_mouse_over(Control &control) {
  happen([&] { control.MouseMove.Raise({.button = 0, .shift = 0}); });
}

void Rig::release_mouse_on(Control &control) {
  happen([&] { control.MouseUp.Raise({.button = 1, .shift = 0}); });
}

void Rig::tick(TimerControl &timer, int times) {
  for (int i = 0; i < times && !end_status_.has_value(); ++i)
    happen([&] { timer.Tick(); });
}

TracedProperties &Rig::WatcherOf(PropertyOwner &owner) {
  auto &watcher = property_watchers_[&owner];
  if (!watcher)
    watcher = std::make_unique<TracedProperties>(trace_, owner);
  return *watcher;
}

}  // namespace borvane
