#include "controls/property.h"

#include "basic/failure.h"

namespace borvane {

Extent &Extent::operator=(float value) {
  if (value < 0)
    Fail(Failure::InvalidPropertyValue);
  Property<float>::operator=(value);
  return *this;
}

}  // namespace borvane
