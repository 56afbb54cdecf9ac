#include "scan/scanners.h"

namespace borvane {

void ScanMapAnchorList(Integer & /*mode*/, std::string & /*page*/) {}

}  // namespace borvane
