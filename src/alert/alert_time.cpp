#include "alert/alert_time.h"

#include <cstdint>

#include "basic/number.h"
#include "basic/text.h"
#include "core/time_text.h"

namespace borvane {

std::string FirstAlertTime(Date now) {
  const std::string time = TimeText(now);

  // Meant (alert-time-does-not-borrow): one second less should borrow from the minutes. It acts on the seconds alone,
  // so at second 00 the text ends in -1 and is no date; nothing alerts then until the load of the short bar sets the
  // time again.
  return FormatDate(now, "mm-dd-yyyy") + " " + std::string(Piece(time, 1, 6)) +
         IntegerText(RoundToInteger(NumericPrefix(RestFrom(time, 7)) - 1));
}

Date EventTime(std::string_view date, std::string_view time) {
  // Meant (event-time-joined-as-text): the two should be added. They are joined as texts, so that an event whose date
  // has a time of its own has no moment, and never alerts.
  return DateValue(DateText(DateValue(date)) + " " + DateText(DateValue(time)));
}

std::string DateText(Date date) {
  constexpr std::int64_t seconds_a_day = 24 * 60 * 60;
  const bool is_base_day = date.seconds >= 0 && date.seconds < seconds_a_day;
  const bool is_midnight = date.seconds % seconds_a_day == 0;

  const std::string day = is_base_day ? "" : FormatDate(date, "mm/dd/yyyy");
  const std::string time = is_midnight ? "" : FormatDate(date, "hh:mm:ss ampm");
  return day + (day.empty() || time.empty() ? "" : " ") + time;
}

}  // namespace borvane
