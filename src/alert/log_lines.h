#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace borvane {

/// Finds out which of some expected lines a text has. The text comes in pieces and is not kept. A line ends with
/// carriage return and line feed; a lone one of them is part of its line.
class LogLines {
 public:
  /// Refers to `expected`, which has to outlive this.
  explicit LogLines(const std::vector<std::string> &expected);

  /// Begins with a new text.
  void Clear();

  /// The next piece of the text.
  void Take(std::string_view piece);

  /// Whether `line`, one of those expected, has been taken with its end.
  bool Contains(std::string_view line) const { return found_.at(line); }

  /// What has been taken after the last line end; cut short when it is longer than any expected line.
  std::string_view rest() const { return rest_; }

 private:
  void Keep(std::string_view part);
  void EndLine(std::string_view line);

  std::unordered_map<std::string_view, bool> found_;
  std::size_t longest_ = 0;
  std::string rest_;
  bool rest_ends_in_return_ = false;
};

}  // namespace borvane
