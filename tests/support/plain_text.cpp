#include "support/plain_text.h"

#include <cstddef>
#include <string>

#include "basic/failure.h"

namespace borvane::plain {

namespace {

int LengthOf(const std::string &text) { return static_cast<int>(text.size()); }

/// The character at `position`, counted from 1.
char CharacterAt(const std::string &text, int position) { return text.at(static_cast<std::size_t>(position - 1)); }

bool IsAt(const std::string &text, const std::string &what, int position) {
  for (int i = 1; i <= LengthOf(what); ++i) {
    const int here = position + i - 1;
    if (here > LengthOf(text) || CharacterAt(text, here) != CharacterAt(what, i))
      return false;
  }
  return true;
}

}  // namespace

int Find(const std::string &text, const std::string &what, int from) {
  if (from < 1)
    Fail(Failure::InvalidArgument);
  for (int position = from; position <= LengthOf(text); ++position) {
    if (IsAt(text, what, position))
      return position;
  }
  return 0;
}

std::string Piece(const std::string &text, int from, int length) {
  if (from < 1)
    Fail(Failure::InvalidArgument);
  if (length < 0)
    Fail(Failure::InvalidArgument);
  std::string piece;
  for (int position = from; position <= LengthOf(text) && LengthOf(piece) < length; ++position)
    piece += CharacterAt(text, position);
  return piece;
}

std::string RestFrom(const std::string &text, int n) {
  if (n < 1)
    Fail(Failure::InvalidArgument);
  // Not one by one: a page is cut thousands of times.
  return n > LengthOf(text) ? std::string() : text.substr(static_cast<std::size_t>(n - 1));
}

std::string Trim(const std::string &text) {
  std::string trimmed = text;
  while (!trimmed.empty() && trimmed.front() == ' ')
    trimmed.erase(trimmed.begin());
  while (!trimmed.empty() && trimmed.back() == ' ')
    trimmed.pop_back();
  return trimmed;
}

}  // namespace borvane::plain
