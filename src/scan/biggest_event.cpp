#include "scan/biggest_event.h"

#include "basic/number.h"
#include "settings/values.h"

namespace borvane {

void KeepBiggest(EventFields &fields) {
  const double strongest = NumericPrefix(ReadSetting(Setting::LastBig));

  const double magnitude = NumericPrefix(fields(1));

  // The older one of two equal events is kept.
  if (strongest >= magnitude)
    return;

  // Meant (magnitude-stored-before-the-missing-place): nothing should be stored of a row that has no place. Its
  // magnitude is stored before the missing slot ends the scan, and the place and time of the one before remain.
  SaveSetting(Setting::LastBig, fields(1));
  SaveSetting(Setting::BigPlace, fields(7));
  SaveSetting(Setting::BigTime, fields(3));
  SaveSetting(Setting::BigDate, fields(2));
}

}  // namespace borvane
