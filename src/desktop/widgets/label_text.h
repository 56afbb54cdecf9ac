#pragma once

#include <QString>
#include <string_view>

#include "desktop/windows_1252.h"

namespace borvane {

/// A label or a panel shows no more characters of its text, which may come from a host and be of any length. That is
/// wider than a screen, and Qt lays out whatever it is given, seen or not.
inline constexpr std::size_t longest_label = 1'000;

/// `text` as a label shows it.
inline QString LabelText(std::string_view text) { return ShownText(text.substr(0, longest_label)); }

}  // namespace borvane
