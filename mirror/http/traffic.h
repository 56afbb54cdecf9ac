#pragma once

#include <QtGlobal>
#include <map>

namespace borvane::mirror {

/// What a server has answered since its start.
struct Traffic {
  std::map<int, quint64> answers;  ///< how many, by status
};

}  // namespace borvane::mirror
