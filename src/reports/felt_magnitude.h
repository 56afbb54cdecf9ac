#pragma once

#include "basic/integer.h"

namespace borvane {

// How strongly one person has felt an event, as the program's own number. It is made of a score, which each click on an
// answer changes as it happens, and of the floor.

/// What a click on the box at position `box` of Check2 adds to the score, while the first box is ticked or not.
float ScoreOfBox(int box, bool first_is_ticked);

/// What a click on the entry at `position` of Combo2 adds to the score.
float ScoreOfStrength(int position);

/// The felt magnitude of a score on the floor at `position` of Combo3, which is -1 where no entry has been picked.
float FeltMagnitude(Integer position, float score);

}  // namespace borvane
