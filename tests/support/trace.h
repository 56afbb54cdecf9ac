#pragma once

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace borvane {

/// Lines of text, shown one below the other when a test fails.
struct Lines : std::vector<std::string> {
  using vector::vector;

  friend void PrintTo(const Lines &lines, std::ostream *stream) {
    for (const std::string &line : lines)
      *stream << "\n      " << line;
  }
};

/// What crossed the platform interface, a line each, in order. The first word says what it was:
/// "request http://…", "write Area=…", "pump in", "show frmRecords".
class Trace {
 public:
  void Add(std::string line) { lines_.push_back(std::move(line)); }
  void Clear() { lines_.clear(); }

  const Lines &All() const { return lines_; }

  /// The lines that begin with one of `words`.
  Lines Of(std::initializer_list<std::string_view> words) const {
    Lines chosen;
    std::copy_if(lines_.begin(), lines_.end(), std::back_inserter(chosen), [&](const std::string &line) {
      const std::string_view first = std::string_view(line).substr(0, line.find(' '));
      return std::find(words.begin(), words.end(), first) != words.end();
    });
    return chosen;
  }

 private:
  Lines lines_;
};

}  // namespace borvane
