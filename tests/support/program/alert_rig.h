#pragma once

#include "alert/frmQalert.h"
#include "alert/quake_alert.h"
#include "settings/conffrm.h"
#include "support/rig.h"

namespace borvane {

/// A started program with an alert magnitude of 3.5. Its records window was loaded at 01:30:15 on 7 February 2018, so
/// that events alert that are older than 01:30:13. The popup stays where it is unless a test asks for steps.
struct AlertRig : Rig {
  AlertRig() {
    start();
    Module1->AlertThreshold = 3.5F;
    clear_trace();
  }

  /// The next shaking has that many steps.
  void shake(int steps) { random().Add((steps + 0.5) / 600); }

  /// An event as a scanner has it.
  static EventFields event(std::string_view magnitude, std::string_view date, std::string_view time, int bound = 20) {
    EventFields fields(bound);
    fields(1) = magnitude;
    fields(2) = date;
    fields(3) = time;
    fields(4) = "34.495N";
    return fields;
  }

  /// An event that calls for an alert.
  static EventFields strong(std::string_view magnitude = "5.0") { return event(magnitude, "2018/02/07", "01:00:00"); }

  void check(EventFields fields) {
    if (random().is_empty())
      shake(0);
    happen([&] { CheckEventAlert(fields); });
  }

  /// Whether `fields` raise the alert.
  bool alerts(EventFields fields) {
    clear_trace();
    check(std::move(fields));
    return trace({"show"}) == Lines{"show frmQalert"};
  }
};

}  // namespace borvane
