#pragma once

#include <algorithm>
#include <string_view>

namespace borvane {

constexpr char LowerCase(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// Whether the texts are equal but for the case of the letters A to Z.
constexpr bool EqualInAnyCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return LowerCase(x) == LowerCase(y); });
}

}  // namespace borvane
