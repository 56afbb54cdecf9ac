#pragma once

#include <string>
#include <string_view>

namespace borvane {

// Text is bytes of Windows-1252, one character each. Positions count from 1. A blank is 0x20 and nothing else.

/// The position of the first `what` in `text` at or after position `from`; 0 when there is none. An empty `what` is
/// found at `from` itself while `from` lies within the text. Raises an invalid argument when `from` is below 1.
int Find(std::string_view text, std::string_view what, int from = 1);

/// Up to `length` characters of `text` from position `from` on; what there is when the text ends before. Raises an
/// invalid argument when `from` is below 1 or `length` below 0.
std::string_view Piece(std::string_view text, int from, int length);

/// All of `text` from position `n` on; empty past the end. Raises an invalid argument when `n` is below 1.
std::string_view RestFrom(std::string_view text, int n);

/// `text` without the blanks at both ends. A tab or a line feed stays.
std::string_view Trim(std::string_view text);

/// `text` with the first letter of each word capital and the rest small. Only blanks separate words.
std::string ProperCase(std::string_view text);

}  // namespace borvane
