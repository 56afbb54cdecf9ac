#include "scan/working_text.h"

#include <algorithm>

#include "basic/text.h"

namespace borvane {

std::size_t Marker::RarestOf(std::string_view text) {
  const auto is_capital = [](char c) { return c >= 'A' && c <= 'Z'; };
  const auto capital = std::find_if(text.begin(), text.end(), is_capital);
  return capital == text.end() ? 0 : static_cast<std::size_t>(capital - text.begin());
}

void WorkingText::Search(Marker &marker, std::size_t begin) const {
  const std::string_view text = marker.text_;
  marker.searched_from_ = begin;
  const char rare = text[marker.rare_];
  std::size_t place = page_.find(rare, begin + marker.rare_);
  // Most markers are one character and found now.
  while (place != std::string::npos && text.size() > 1 && page_.compare(place - marker.rare_, text.size(), text) != 0)
    place = page_.find(rare, place + 1);
  marker.found_ = place == std::string::npos ? place : place - marker.rare_;
}

std::string_view WorkingText::Piece(int from, int length) const { return borvane::Piece(Rest(), from, length); }

void WorkingText::TakeRest(int n) {
  if (n < 1)
    Fail(Failure::InvalidArgument);
  start_ = std::min(page_.size(), start_ + static_cast<std::size_t>(n) - 1);
}

}  // namespace borvane
