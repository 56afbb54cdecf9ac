#pragma once

#include <string>
#include <string_view>

#include "basic/integer.h"

namespace borvane {

/// A text that a scanner searches for again and again, with the memory of its last search. The working text only ever
/// grows shorter from the front, so that a place once found, or found missing, need not be looked for again: this keeps
/// a scan linear in the page, whatever the page holds.
class Marker {
 public:
  explicit Marker(std::string_view text) : text_(text) {}

 private:
  friend class WorkingText;

  std::string_view text_;
  std::size_t searched_from_ = 1;  // as offsets in the whole page; from > found: nothing has been searched yet
  std::size_t found_ = 0;          // npos where there is none
};

/// The page as a scanner sees it: cut shorter from the front as fields are taken. Positions count from 1 in what is
/// left. On destruction the page itself is cut, so that its owner holds what the scan has left.
class WorkingText {
 public:
  explicit WorkingText(std::string &page) : page_(page) {}
  WorkingText(const WorkingText &) = delete;
  WorkingText &operator=(const WorkingText &) = delete;
  ~WorkingText() { page_.erase(0, start_); }

  /// The position of `marker` at `from` or behind it; 0 when there is none. Raises an invalid argument when `from` is
  /// below 1.
  int Find(Marker &marker, int from = 1) const;

  /// Up to `length` characters from position `from` on. Raises an invalid argument when `from` is below 1 or `length`
  /// below 0.
  std::string_view Piece(int from, int length) const;

  /// Cuts everything in front of position `n`, which is at least 1.
  void TakeRest(int n);

  bool IsEmpty() const { return start_ == page_.size(); }

 private:
  std::string_view Rest() const { return std::string_view(page_).substr(start_); }

  std::string &page_;
  std::size_t start_ = 0;
};

}  // namespace borvane
