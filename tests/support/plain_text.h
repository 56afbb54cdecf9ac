#pragma once

#include <string>

/// The rules of basic/text.h once more, slow and plain: characters are compared one by one at positions from 1, and
/// every result is a copy. They judge the quick ones, and the scanners that are made of them.
namespace borvane::plain {

int Find(const std::string &text, const std::string &what, int from);

std::string Piece(const std::string &text, int from, int length);

std::string RestFrom(const std::string &text, int n);

std::string Trim(const std::string &text);

}  // namespace borvane::plain
