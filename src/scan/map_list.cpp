#include "scan/scanners.h"

namespace borvane {

void ScanMapList(Integer & /*mode*/, std::string & /*page*/) {}

}  // namespace borvane
