#pragma once

#include "platform/region.h"

namespace borvane {

/// The region of the user's session.
class DesktopRegion final : public Region {
 public:
  char DecimalSeparator() override;
};

}  // namespace borvane
