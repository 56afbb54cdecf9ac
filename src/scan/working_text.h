#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "basic/failure.h"
#include "basic/integer.h"

namespace borvane {

/// A text that a scanner searches for again and again, with the memory of its last search. The working text only ever
/// grows shorter from the front, so that a place once found, or found missing, need not be looked for again: this keeps
/// a scan linear in the page, whatever the page holds.
class Marker {
 public:
  explicit Marker(std::string_view text) : text_(text), rare_(RarestOf(text)) {}

 private:
  friend class WorkingText;

  /// The offset of the character that a search looks for first: a capital letter, if there is one, since pages have few
  /// of them. Slashes and brackets, with which most markers begin, are in every row several times.
  static std::size_t RarestOf(std::string_view text);

  /// The offset of the text in `page`, at or after `begin`; npos where there is none.
  std::size_t FindIn(std::string_view page, std::size_t begin) const {
    return text_.size() == 1 ? page.find(text_.front(), begin) : FindByRarest(page, begin);
  }
  std::size_t FindByRarest(std::string_view page, std::size_t begin) const;

  std::string_view text_;
  std::size_t rare_;
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

  /// The position of `marker` at or after `from`; 0 when there is none. Raises an invalid argument when `from` is
  /// below 1.
  int Find(Marker &marker, int from = 1) const {
    if (from < 1)
      Fail(Failure::InvalidArgument);

    const std::size_t begin = start_ + static_cast<std::size_t>(from) - 1;
    const bool is_remembered = marker.searched_from_ <= begin && begin <= marker.found_;
    if (!is_remembered)
      Search(marker, begin);
    return marker.found_ == std::string::npos ? 0 : static_cast<int>(marker.found_ - start_ + 1);
  }

  /// Up to `length` characters from position `from` on. Raises an invalid argument when `from` is below 1 or `length`
  /// below 0.
  std::string_view Piece(int from, int length) const {
    if (from < 1 || length < 0)
      Fail(Failure::InvalidArgument);
    const std::size_t begin = std::min(page_.size(), start_ + static_cast<std::size_t>(from) - 1);
    return std::string_view(page_).substr(begin, static_cast<std::size_t>(length));
  }

  /// Cuts everything in front of position `n`. Raises an invalid argument when `n` is below 1.
  void TakeRest(int n) {
    if (n < 1)
      Fail(Failure::InvalidArgument);
    start_ = std::min(page_.size(), start_ + static_cast<std::size_t>(n) - 1);
  }

  bool IsEmpty() const { return start_ == page_.size(); }

 private:
  void Search(Marker &marker, std::size_t begin) const {
    marker.searched_from_ = begin;
    marker.found_ = marker.FindIn(page_, begin);
  }

  std::string &page_;
  std::size_t start_ = 0;
};

}  // namespace borvane
