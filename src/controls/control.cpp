#include "controls/control.h"

namespace borvane {

std::string Control::FullName() const {
  std::string name(name_);
  if (index_ != no_index)
    name += "(" + std::to_string(index_) + ")";
  return name;
}

}  // namespace borvane
