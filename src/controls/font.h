#pragma once

#include <string_view>

namespace borvane {

/// What a text is drawn with.
struct Font {
  std::string_view name = "";  // empty for the window's own
  float size = 0;              // in points; 0 for the window's own
  bool bold = false;
};

}  // namespace borvane
