#pragma once

#include <vector>

#include "catalogue/event.h"

namespace borvane::mirror {

/// The events of several sources without doubles. `sources` has the events of each source, the most trusted source
/// first; the result has those that are to be shown, in the order of the sources and of time.
///
/// Two events of two sources are one when their times are within 30 s, their epicentres within 100 km and their
/// magnitudes within 1.5; one without a magnitude may be of any. Of such two the more trusted one stays. An event never
/// stands for two of one source: where several fit, those nearest in time belong together, then those nearest in space.
std::vector<const Event *> MergeSources(std::vector<std::vector<const Event *>> sources);

}  // namespace borvane::mirror
