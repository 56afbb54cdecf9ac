#pragma once

#include "basic/integer.h"

namespace borvane {

/// What the felt report keeps while its window comes and goes. It lives as long as the program.
struct ReportState {
  float FeltScore = 0;       // the score of the clicks so far, see felt_magnitude.h
  bool FormTouched = false;  // whether a text box has been left since the last submission started
  Integer UserSlot;          // which of the stored reporters this one is; -1 until a name has been entered
};

}  // namespace borvane
