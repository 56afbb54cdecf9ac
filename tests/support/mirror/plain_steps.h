#pragma once

#include <stdexcept>
#include <string>

/// What the monitor's scanners are made of, written a second time and plainly: with copies, positions that count from 1
/// and fit into 16 bits, and 0 for what is not found. A step that fails throws std::runtime_error.
namespace borvane::mirror::plain {

/// A position or a number made from one.
inline long Fits(long number) {
  if (number < -32768 || number > 32767)
    throw std::runtime_error("number beyond 16 bits");
  return number;
}

/// The position of `what` at or after `from`, of any size.
inline long FarFind(const std::string &text, const std::string &what, long from) {
  if (from < 1)
    throw std::runtime_error("search from below 1");
  if (from > static_cast<long>(text.size()))
    return 0;
  const std::size_t found = text.find(what, static_cast<std::size_t>(from - 1));
  return found == std::string::npos ? 0 : static_cast<long>(found) + 1;
}

inline long FindAt(const std::string &text, const std::string &what, long from) {
  return Fits(FarFind(text, what, Fits(from)));
}

inline std::string Piece(const std::string &text, long from, long length) {
  if (from < 1 || length < 0)
    throw std::runtime_error("piece from below 1 or of negative length");
  if (from > static_cast<long>(text.size()))
    return "";
  return text.substr(static_cast<std::size_t>(from - 1), static_cast<std::size_t>(length));
}

inline std::string Rest(const std::string &text, long from) {
  return Piece(text, from, static_cast<long>(text.size()));
}

/// Without the blanks at both ends; line feeds and tabs stay.
inline std::string Trimmed(const std::string &text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace borvane::mirror::plain
