#include "core/time_text.h"

#include "basic/number.h"
#include "basic/text.h"

namespace borvane {

std::string TimeText(Date date) { return FormatDate(date, "hh:mm:ss"); }

std::string FirstAlertTime(Date now) {
  const std::string time = TimeText(now);

  // Meant (alert-time-does-not-borrow): one second less should borrow from the minutes. It acts on the seconds alone,
  // so at second 00 the text ends in -1 and is no date; the alert then keeps silent for the whole run.
  return FormatDate(now, "mm-dd-yyyy") + " " + std::string(Piece(time, 1, 6)) +
         IntegerText(RoundToInteger(NumericPrefix(RestFrom(time, 7)) - 1));
}

}  // namespace borvane
