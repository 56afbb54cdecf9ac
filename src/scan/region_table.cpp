#include "scan/scanners.h"

namespace borvane {

void ScanRegionTable(Integer & /*mode*/, std::string & /*page*/) {}

}  // namespace borvane
