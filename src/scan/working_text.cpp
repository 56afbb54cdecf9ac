#include "scan/working_text.h"

#include <algorithm>

namespace borvane {

std::size_t Marker::RarestOf(std::string_view text) {
  const auto is_capital = [](char c) { return c >= 'A' && c <= 'Z'; };
  const auto capital = std::find_if(text.begin(), text.end(), is_capital);
  return capital == text.end() ? 0 : static_cast<std::size_t>(capital - text.begin());
}

std::size_t Marker::FindByRarest(std::string_view page, std::size_t begin) const {
  const char rare = text_[rare_];
  std::size_t place = page.find(rare, begin + rare_);
  while (place != std::string::npos && page.compare(place - rare_, text_.size(), text_) != 0)
    place = page.find(rare, place + 1);
  return place == std::string::npos ? place : place - rare_;
}

}  // namespace borvane
