#include "common/mirror_probe.h"

#include "common/letters.h"

namespace borvane {

namespace {

constexpr std::string_view end_of_head = "\r\n\r\n";
constexpr std::string_view end_of_line = "\r\n";
constexpr std::size_t longest_head = 4096;

/// Takes the first line off `head`, without its end.
std::string_view TakeLine(std::string_view &head) {
  const std::string_view line = head.substr(0, head.find(end_of_line));
  head.remove_prefix(std::min(line.size() + end_of_line.size(), head.size()));
  return line;
}

std::string_view WithoutBlanksInFront(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(" \t"), text.size()));
}

/// The value of the first header of that name in the head of the answer, without what follows a blank in it; nothing
/// when there is none, or the head is not whole.
std::optional<std::string_view> FirstWordOf(std::string_view field, std::string_view answer) {
  const std::size_t end = answer.find(end_of_head);
  if (end == std::string_view::npos || !answer.starts_with("HTTP/1."))
    return {};
  std::string_view head = answer.substr(0, end);
  while (!head.empty()) {
    const std::string_view line = TakeLine(head);
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos || !EqualInAnyCase(line.substr(0, colon), field))
      continue;
    const std::string_view value = WithoutBlanksInFront(line.substr(colon + 1));
    return value.substr(0, value.find_first_of(" \t"));
  }
  return {};
}

}  // namespace

bool IsUnfinishedHead(std::string_view answer) {
  return answer.find(end_of_head) == std::string_view::npos && answer.size() <= longest_head;
}

std::optional<std::string_view> MirrorVersion(std::string_view answer) {
  constexpr std::string_view product = "borvane-mirror/";
  const std::optional<std::string_view> server = FirstWordOf("Server", answer);
  if (!server || !server->starts_with(product))
    return {};
  return server->substr(product.size());
}

bool IsMirrorOfOurPages(std::string_view answer) {
  return MirrorVersion(answer) && FirstWordOf(pages_field, answer) == pages_number;
}

}  // namespace borvane
