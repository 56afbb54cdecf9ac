#pragma once

#include <utility>
#include <vector>

#include "catalogue/event.h"

namespace borvane::mirror {

/// The events of several sources without doubles.
struct MergedEvents {
  std::vector<const Event *> shown;  ///< in the order of the sources and of time
  /// The others, each with the shown one that it is.
  std::vector<std::pair<const Event *, const Event *>> doubles;
};

/// Finds what several sources report. `sources` has the events of each source, the most trusted source first.
///
/// Two events of two sources are one when their times are within 30 s, their epicentres within 100 km and their
/// magnitudes within 1.5; one without a magnitude may be of any. Of such two the more trusted one stays. An event is
/// never taken for two of one source: where several fit, those nearest in time belong together, then those nearest in
/// space. An event is compared with at most 50 others, the nearest in time; even a dense aftershock sequence has about
/// ten a minute.
MergedEvents MergeSources(std::vector<std::vector<const Event *>> sources);

}  // namespace borvane::mirror
