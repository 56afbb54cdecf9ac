#include "support/plain_number.h"

#include <cstdlib>

namespace borvane::plain {

namespace {

bool IsDigits(const std::string &text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

std::string WithoutSign(const std::string &text) {
  return text.starts_with('+') || text.starts_with('-') ? text.substr(1) : text;
}

bool IsNumber(const std::string &text) {
  std::string mantissa = WithoutSign(text);
  const std::size_t mark = mantissa.find_first_of("eE");
  if (mark != std::string::npos) {
    if (!IsDigits(WithoutSign(mantissa.substr(mark + 1))))
      return false;
    mantissa.resize(mark);
  }
  const std::size_t point = mantissa.find('.');
  if (point != std::string::npos)
    mantissa.erase(point, 1);
  return IsDigits(mantissa);
}

}  // namespace

double SaturatedPrefix(std::string text) {
  while (text.starts_with(' '))
    text.erase(0, 1);
  while (!text.empty() && !IsNumber(text))
    text.pop_back();
  return text.empty() ? 0 : std::strtod(text.c_str(), nullptr);
}

}  // namespace borvane::plain
