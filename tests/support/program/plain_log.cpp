#include "support/program/plain_log.h"

#include <algorithm>

#include "basic/failure.h"

namespace borvane::plain {

namespace {

const std::string line_end = "\r\n";

/// The lines of the text. What follows the last line end is one, too, if the text is whole.
std::vector<std::string> LinesOf(const std::string &text, bool is_whole) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (std::size_t end = text.find(line_end); end != std::string::npos; end = text.find(line_end, start)) {
    lines.push_back(text.substr(start, end - start));
    start = end + line_end.size();
  }
  if (is_whole && start < text.size())
    lines.push_back(text.substr(start));
  return lines;
}

/// Whether the file has the line. Fails where it cannot be read so far.
bool HasLine(Files &files, const std::string &path, const std::string &line) {
  std::string text;
  const bool is_whole = files.Read(path, [&](std::string_view piece) { text += piece; });
  const std::vector<std::string> lines = LinesOf(text, is_whole);
  if (std::find(lines.begin(), lines.end(), line) != lines.end())
    return true;
  if (!is_whole)
    Fail(Failure::FileAccess);
  return false;
}

}  // namespace

void WriteLog(Files &files, const std::string &folder, const std::vector<std::string> &lines) {
  const std::string path = folder + "/quakes.log";
  try {
    if (!files.Exists(folder))
      files.MakeFolder(folder);
    for (const std::string &line : lines) {
      if (!files.Exists(path))
        files.Append(path, "");
      if (!HasLine(files, path, line))
        files.Append(path, line + line_end);
    }
  } catch (const RuntimeError &) {
    // Ends the run, as a fault of the log does.
  }
}

}  // namespace borvane::plain
