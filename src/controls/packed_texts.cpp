#include "controls/packed_texts.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace borvane {

namespace {

using Offset = std::uint32_t;  // in the bytes

}  // namespace

PackedTexts::PackedTexts(std::span<const std::string_view> texts) {
  const std::size_t size_of_offsets = (texts.size() + 1) * sizeof(Offset);
  std::size_t size = size_of_offsets;
  for (const std::string_view text : texts)
    size += text.size();

  bytes_ = std::make_unique_for_overwrite<char[]>(size);
  char *place_of_offset = bytes_.get();
  char *place = bytes_.get() + size_of_offsets;
  const auto add_offset = [&] {
    const auto offset = static_cast<Offset>(place - bytes_.get());
    std::memcpy(place_of_offset, &offset, sizeof offset);
    place_of_offset += sizeof offset;
  };
  for (const std::string_view text : texts) {
    add_offset();
    place = std::copy(text.begin(), text.end(), place);
  }
  add_offset();
}

std::size_t PackedTexts::Count() const { return bytes_ == nullptr ? 0 : OffsetAt(0) / sizeof(Offset) - 1; }

std::size_t PackedTexts::OffsetAt(std::size_t index) const {
  Offset offset = 0;
  std::memcpy(&offset, bytes_.get() + index * sizeof offset, sizeof offset);
  return offset;
}

std::string_view PackedTexts::operator()(int number) const {
  const auto index = static_cast<std::size_t>(number - 1);
  if (index >= Count())
    return {};
  const std::size_t begin = OffsetAt(index);
  return {bytes_.get() + begin, OffsetAt(index + 1) - begin};
}

void PackedTexts::Set(int number, std::string_view text) {
  std::vector<std::string_view> texts;
  for (int i = 1; i <= static_cast<int>(Count()) || i <= number; ++i)
    texts.push_back(i == number ? text : (*this)(i));
  *this = PackedTexts(texts);
}

}  // namespace borvane
