#include "bars/bar_content.h"

#include "bars/Form1.h"

namespace borvane {

void UpdateShortBar() {
  // As every reference to the bar does, the update loads it.
  static_cast<void>(*Form1);
}

}  // namespace borvane
