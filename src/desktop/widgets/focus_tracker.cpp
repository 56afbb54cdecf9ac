#include "desktop/widgets/focus_tracker.h"

#include <utility>

#include "desktop/widgets/binder.h"

namespace borvane {

void FocusTracker::Entered(Binder &binder) {
  if (focused_ == &binder)
    return;
  Binder *left = std::exchange(focused_, &binder);
  if (left != nullptr)
    left->Left();
}

void FocusTracker::Forget(const Binder &binder) {
  if (focused_ == &binder)
    focused_ = nullptr;
}

}  // namespace borvane
