#pragma once

#include <string>
#include <vector>

#include "platform/files.h"

namespace borvane::plain {

/// Writes the lines that are new to the log again, slow and plain: for each line the file is read whole. A reference
/// for the writer that reads it once.
void WriteLog(Files &files, const std::string &folder, const std::vector<std::string> &lines);

}  // namespace borvane::plain
