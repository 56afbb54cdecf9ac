#pragma once

#include <QString>
#include <QTextDocument>
#include <algorithm>
#include <string_view>

#include "desktop/windows_1252.h"

namespace borvane {

/// A label or a panel shows no more characters of its text, which may come from a host and be of any length. That is
/// wider than a screen, and Qt lays out whatever it is given, seen or not.
inline constexpr std::size_t longest_label = 1'000;

/// `text` as a label shows it.
inline QString LabelText(std::string_view text) { return ShownText(text.substr(0, longest_label)); }

/// A text as it shows under the pointer. It may come from a page, and Qt would take what looks like markup as such.
inline QString HoverText(const QString &text) {
  return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}
inline QString HoverText(std::string_view text) { return HoverText(LabelText(text)); }

/// `text` for where there is room for one line: line ends, tabs and other control characters are blanks.
inline QString OneLine(QString text) {
  const auto is_control = [](QChar c) { return c.category() == QChar::Other_Control; };
  std::replace_if(text.begin(), text.end(), is_control, QLatin1Char(' '));
  return text;
}

}  // namespace borvane
