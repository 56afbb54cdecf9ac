#include "controls/packed_texts.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace borvane {

namespace {

using End = std::uint32_t;  // an offset in the bytes

}  // namespace

template <class Text>
void PackedTexts::Pack(std::span<const Text> texts) {
  std::size_t size = texts.size() * sizeof(End);
  for (const Text &text : texts)
    size += text.size();

  bytes_.resize(size);
  count_ = texts.size();
  char *place_of_end = bytes_.data();
  char *place = place_of_end + texts.size() * sizeof(End);
  for (const Text &text : texts) {
    place = std::copy(text.begin(), text.end(), place);
    const End end = static_cast<End>(place - bytes_.data());
    std::memcpy(place_of_end, &end, sizeof end);
    place_of_end += sizeof end;
  }
}

template void PackedTexts::Pack(std::span<const std::string>);
template void PackedTexts::Pack(std::span<const std::string_view>);

std::size_t PackedTexts::EndOf(std::size_t index) const {
  End end = 0;
  std::memcpy(&end, bytes_.data() + index * sizeof end, sizeof end);
  return end;
}

std::string_view PackedTexts::operator()(int number) const {
  const auto index = static_cast<std::size_t>(number - 1);
  if (index >= count_)
    return {};
  const std::size_t begin = index == 0 ? count_ * sizeof(End) : EndOf(index - 1);
  return std::string_view(bytes_).substr(begin, EndOf(index) - begin);
}

void PackedTexts::Set(int number, std::string_view text) {
  std::vector<std::string> texts;
  for (int i = 1; i <= static_cast<int>(count_) || i <= number; ++i)
    texts.emplace_back(i == number ? text : (*this)(i));
  *this = PackedTexts(std::span<const std::string>(texts));
}

}  // namespace borvane
