#include "alert/log_file.h"

#include "basic/failure.h"

namespace borvane {

LogFile::LogFile(Files &files, const std::string &path, const std::vector<std::string> &lines)
    : files_(files), path_(path), lines_(lines) {}

void LogFile::Ensure() {
  if (!files_.Exists(path_))
    files_.Append(path_, "");
}

bool LogFile::Contains(const std::string &line) {
  Update();
  if (lines_.Contains(line))
    return true;
  // A line that was found in front of a fault counts; to know that one is missing takes the whole file.
  if (!state_.has_value())
    Fail(Failure::FileAccess);
  return !line.empty() && lines_.rest() == line;
}

void LogFile::Append(const std::string &line) {
  // Meant (log-joins-a-last-line-without-end): a file whose last line has no end should get one first. The line is
  // joined to that one, is not found by itself, and so is appended once more at the next refresh.
  const std::string text = line + "\r\n";
  const FileState after = files_.Append(path_, text);

  FileState expected = *state_;
  expected.size += text.size();
  expected.changed = after.changed;
  if (after != expected) {
    state_.reset();
    return;
  }
  lines_.Take(text);
  state_ = after;
}

void LogFile::Update() {
  const FileState state = files_.StateOf(path_);
  if (state == state_)
    return;
  state_.reset();
  lines_.Clear();
  if (files_.Read(path_, [this](std::string_view piece) { lines_.Take(piece); }))
    state_ = state;
}

}  // namespace borvane
