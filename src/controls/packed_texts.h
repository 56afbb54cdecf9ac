#pragma once

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

namespace borvane {

/// Texts, counted from 1, in one piece of memory. A list has many rows of short texts: one by one, the allocation of
/// each would cost more than all else. Together they are below four gigabytes.
class PackedTexts {
 public:
  PackedTexts() = default;
  PackedTexts(std::initializer_list<std::string_view> texts) { Pack(std::span(texts.begin(), texts.size())); }
  explicit PackedTexts(std::span<const std::string> texts) { Pack(texts); }

  /// The text at `number`, which is at least 1; empty where none has been set. Good until a text is set.
  std::string_view operator()(int number) const;

  /// Sets the text at `number`, which is at least 1; those in front of it that are new are empty.
  void Set(int number, std::string_view text);

 private:
  template <class Text>
  void Pack(std::span<const Text> texts);

  std::size_t EndOf(std::size_t index) const;

  std::string bytes_;  ///< where each text ends, then the texts
  std::size_t count_ = 0;
};

}  // namespace borvane
