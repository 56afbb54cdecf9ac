#include "alert/log_lines.h"

#include <algorithm>

namespace borvane {

LogLines::LogLines(const std::vector<std::string> &expected) {
  found_.reserve(expected.size());
  for (const std::string &line : expected) {
    found_.emplace(line, false);
    longest_ = std::max(longest_, line.size());
  }
}

void LogLines::Clear() {
  for (auto &[line, is_found] : found_)
    is_found = false;
  rest_.clear();
  rest_ends_in_return_ = false;
}

void LogLines::Take(std::string_view piece) {
  // A line end may be divided between two pieces.
  if (rest_ends_in_return_ && piece.starts_with('\n')) {
    rest_.pop_back();
    EndLine(rest_);
    piece.remove_prefix(1);
  }

  for (std::size_t end = piece.find("\r\n"); end != std::string_view::npos; end = piece.find("\r\n")) {
    const std::string_view line = piece.substr(0, end);
    if (rest_.empty()) {
      EndLine(line);
    } else {
      Keep(line);
      EndLine(rest_);
    }
    piece.remove_prefix(end + 2);
  }

  Keep(piece);
}

void LogLines::Keep(std::string_view part) {
  if (part.empty())
    return;
  // With two bytes more than the longest line, it equals none of them, with and without the carriage return of its end.
  const std::size_t room = longest_ + 2 - rest_.size();
  rest_ += part.substr(0, room);
  rest_ends_in_return_ = part.back() == '\r';
}

void LogLines::EndLine(std::string_view line) {
  if (line.size() <= longest_) {
    const auto expected = found_.find(line);
    if (expected != found_.end())
      expected->second = true;
  }
  rest_.clear();
  rest_ends_in_return_ = false;
}

}  // namespace borvane
