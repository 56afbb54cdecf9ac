#include "basic/text.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "basic/failure.h"

namespace borvane {

int Find(std::string_view text, std::string_view what, int from) {
  if (from < 1)
    Fail(Failure::InvalidArgument);

  const auto start = static_cast<std::size_t>(from) - 1;
  if (start >= text.size())
    return 0;
  const std::size_t found = text.find(what, start);
  return found == std::string_view::npos ? 0 : static_cast<int>(found + 1);
}

std::string_view Piece(std::string_view text, int from, int length) {
  if (length < 0)
    Fail(Failure::InvalidArgument);
  return RestFrom(text, from).substr(0, static_cast<std::size_t>(length));
}

std::string_view RestFrom(std::string_view text, int n) {
  if (n < 1)
    Fail(Failure::InvalidArgument);
  return text.substr(std::min(static_cast<std::size_t>(n) - 1, text.size()));
}

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos)
    return text.substr(text.size());
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace borvane
