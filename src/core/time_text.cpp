#include "core/time_text.h"

namespace borvane {

std::string TimeText(Date date) { return FormatDate(date, "hh:mm:ss"); }

}  // namespace borvane
