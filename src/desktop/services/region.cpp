#include "desktop/services/region.h"

#include <QLocale>

#include "desktop/windows_1252.h"

namespace borvane {

char DesktopRegion::DecimalSeparator() {
  const std::string separator = ProgramText(QLocale::system().decimalPoint());
  // One that the program's text does not have has become a "?".
  return separator.size() == 1 && separator != "?" ? separator.front() : '.';
}

}  // namespace borvane
