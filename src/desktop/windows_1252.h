#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace borvane {

// The program's text is bytes of Windows-1252, one character each; Qt's is Unicode. This is the border between them.
// The five bytes that the code page leaves open stand for the control characters of the same number, so that every byte
// comes back as it went.

/// The program's `text` as Qt shows it.
QString ShownText(std::string_view text);

/// What a user typed as the program's text. A character that the code page lacks becomes "?".
std::string ProgramText(const QString &text);

}  // namespace borvane
