#include "scan/scanners.h"

namespace borvane {

void ScanWorldList(Integer & /*mode*/, std::string & /*page*/) {}

}  // namespace borvane
