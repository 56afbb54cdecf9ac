#include "support/program/watching_rig.h"

#include "feed/refresh.h"

namespace borvane {

void WatchingRig::refresh(int mode) {
  happen([&] {
    Integer mode_by_reference = mode;
    RefreshEvents(mode_by_reference);
  });
}

}  // namespace borvane
