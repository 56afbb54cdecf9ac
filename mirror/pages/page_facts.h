#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "pages/areas.h"

namespace borvane::mirror {

/// A source of events, as pages name it.
struct Credit {
  QString name;
  QString text;            ///< whom to thank
  bool is_survey = false;  ///< whether it is the US Geological Survey, which has a page about each of its events
};

/// What pages say and go by besides the events.
struct PageFacts {
  QString origin = {};     ///< where the events come from: "events.geojson"
  bool is_sample = false;  ///< whether they are the bundled sample's, and no news
  std::optional<qint64> data_time =
      {};  ///< when the newest data were made, in milliseconds since 1970 UTC, if that is known
  std::vector<Credit> sources = {};         ///< of live events
  std::vector<Area> areas = AreasWith({});  ///< the named areas in the order in which the monitor lists them
};

}  // namespace borvane::mirror
