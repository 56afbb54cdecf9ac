#include "basic/text.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "basic/failure.h"

namespace borvane {

namespace {

constexpr bool IsBetween(unsigned char c, unsigned char first, unsigned char last) { return c >= first && c <= last; }

/// The letters of Windows-1252 that have a capital form in it: those with accents, but for one, are 32 above theirs.
constexpr unsigned char capital_y_diaeresis = 0x9F;
constexpr unsigned char small_y_diaeresis = 0xFF;
constexpr unsigned char multiplication_sign = 0xD7;
constexpr unsigned char division_sign = 0xF7;

/// S, OE and Z with their marks, from the rows of signs: 0x8A, 0x8C and 0x8E, and 16 above them the small ones.
constexpr bool IsCapitalAmongSigns(unsigned char c) { return c == 0x8A || c == 0x8C || c == 0x8E; }
constexpr bool IsSmallAmongSigns(unsigned char c) { return c == 0x9A || c == 0x9C || c == 0x9E; }

unsigned char SmallLetter(unsigned char c) {
  if (IsBetween(c, 'A', 'Z') || (IsBetween(c, 0xC0, 0xDE) && c != multiplication_sign))
    return static_cast<unsigned char>(c + 0x20);
  if (IsCapitalAmongSigns(c))
    return static_cast<unsigned char>(c + 0x10);
  return c == capital_y_diaeresis ? small_y_diaeresis : c;
}

unsigned char CapitalLetter(unsigned char c) {
  if (IsBetween(c, 'a', 'z') || (IsBetween(c, 0xE0, 0xFE) && c != division_sign))
    return static_cast<unsigned char>(c - 0x20);
  if (IsSmallAmongSigns(c))
    return static_cast<unsigned char>(c - 0x10);
  return c == small_y_diaeresis ? capital_y_diaeresis : c;
}

}  // namespace

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

std::string ProperCase(std::string_view text) {
  std::string proper;
  proper.reserve(text.size());
  bool begins_word = true;
  for (const char c : text) {
    const auto letter = static_cast<unsigned char>(c);
    proper += static_cast<char>(begins_word ? CapitalLetter(letter) : SmallLetter(letter));
    begins_word = c == ' ';
  }
  return proper;
}

}  // namespace borvane
