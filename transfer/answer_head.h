#pragma once

#include <string_view>

namespace borvane {

/// Follows the heads of a transfer's answers, line by line as libcurl passes them, to see whether the last one is
/// whole. The library takes a head that is cut off for a whole one.
class AnswerHead {
 public:
  /// Takes the next line, with its end.
  void TakeLine(std::string_view line);

  /// Whether the blank line has come that ends the head.
  bool IsWhole() const { return is_whole_; }

 private:
  bool is_whole_ = false;
};

}  // namespace borvane
