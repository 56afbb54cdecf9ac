#include "controls/packed_texts.h"

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

  bytes_.reserve(size);
  bytes_.resize(texts.size() * sizeof(End));
  count_ = texts.size();
  char *place = bytes_.data();
  for (const Text &text : texts) {
    bytes_ += text;
    const End end = static_cast<End>(bytes_.size());
    std::memcpy(place, &end, sizeof end);
    place += sizeof end;
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
