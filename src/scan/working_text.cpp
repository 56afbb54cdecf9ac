#include "scan/working_text.h"

#include <algorithm>

#include "basic/text.h"

namespace borvane {

int WorkingText::Find(Marker &marker, int from) const {
  if (from < 1)
    Fail(Failure::InvalidArgument);

  const std::size_t begin = start_ + static_cast<std::size_t>(from) - 1;
  const bool is_remembered = marker.searched_from_ <= begin && begin <= marker.found_;
  if (!is_remembered) {
    marker.searched_from_ = begin;
    // Most markers are one character, for which the general search is twice the work.
    marker.found_ =
        marker.text_.size() == 1 ? page_.find(marker.text_.front(), begin) : page_.find(marker.text_, begin);
  }
  return marker.found_ == std::string::npos ? 0 : static_cast<int>(marker.found_ - start_ + 1);
}

std::string_view WorkingText::Piece(int from, int length) const { return borvane::Piece(Rest(), from, length); }

void WorkingText::TakeRest(int n) {
  if (n < 1)
    Fail(Failure::InvalidArgument);
  start_ = std::min(page_.size(), start_ + static_cast<std::size_t>(n) - 1);
}

}  // namespace borvane
