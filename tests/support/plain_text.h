#pragma once

#include <string>

/// The rules of basic/text.h again, slow and plain: characters are compared one by one at positions from 1, and every
/// result is a copy. A reference for the quick ones, and for the scanners that use them.
namespace borvane::plain {

int Find(const std::string &text, const std::string &what, int from);

std::string Piece(const std::string &text, int from, int length);

std::string RestFrom(const std::string &text, int n);

std::string Trim(const std::string &text);

}  // namespace borvane::plain
