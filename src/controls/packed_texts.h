#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <span>
#include <string_view>

namespace borvane {

/// Texts, counted from 1, in one piece of memory. A list has many rows of short texts: one by one, the allocation of
/// each would cost more than all else. Together they are below four gigabytes.
class PackedTexts {
 public:
  PackedTexts() = default;
  PackedTexts(std::initializer_list<std::string_view> texts) : PackedTexts(std::span(texts.begin(), texts.size())) {}
  explicit PackedTexts(std::span<const std::string_view> texts);

  /// The text at `number`, which is at least 1; empty where none has been set. Good until a text is set.
  std::string_view operator()(int number) const;

  /// Sets the text at `number`, which is at least 1; those in front of it that are new are empty.
  void Set(int number, std::string_view text);

 private:
  std::size_t Count() const;
  std::size_t OffsetAt(std::size_t index) const;

  std::unique_ptr<char[]> bytes_;  ///< where each text begins and the last one ends, then the texts; null for none
};

}  // namespace borvane
