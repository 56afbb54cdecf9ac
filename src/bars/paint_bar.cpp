#include "bars/paint_bar.h"

#include "bars/newTagFrm.h"

namespace borvane {

void PaintBar() {
  // As every reference to the bar does, the painting loads it.
  static_cast<void>(*newTagFrm);
}

}  // namespace borvane
