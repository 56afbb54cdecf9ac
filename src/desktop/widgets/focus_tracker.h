#pragma once

namespace borvane {

class Binder;

/// Knows which control of the program the user works in. It is left when another control of the program is entered, and
/// not when the user turns to another program or answers a message box.
class FocusTracker {
 public:
  /// The user has entered the control of `binder`: the control left for it learns so.
  void Entered(Binder &binder);

  /// `binder` takes no part any more.
  void Forget(const Binder &binder);

 private:
  Binder *focused_ = nullptr;
};

}  // namespace borvane
