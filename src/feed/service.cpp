#include "feed/service.h"

#include "basic/number.h"
#include "core/program_info.h"
#include "feed/hosts.h"

namespace borvane {

std::string VersionDigits() {
  return IntegerText(program_version.major) + IntegerText(program_version.minor) +
         IntegerText(program_version.revision);
}

std::string ServiceAddress(std::string_view query) {
  return AddressOf(Endpoint::Maker, "/cgi-bin/borvane/control.pl?" + std::string(query));
}

}  // namespace borvane
