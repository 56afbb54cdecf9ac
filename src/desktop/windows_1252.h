#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace borvane {

// The program's text is bytes of Windows-1252, one character each; Qt's is Unicode. This is the border between them.
// The code page leaves five bytes open. They become the control characters of the same number, so that every byte comes
// back unchanged; on the screen they are "?".

/// The program's `text` for all that Qt keeps or sends. `ProgramText` gives it back.
QString UnicodeText(std::string_view text);

/// The program's `text` as widgets show it: an open byte is a "?".
QString ShownText(std::string_view text);

/// Text of Qt as the program's. A character that the code page lacks becomes "?".
std::string ProgramText(const QString &text);

/// What the program's text is after a user has edited it into `shown`. What the user left alone keeps its bytes, also
/// those that are shown as "?".
std::string EditedText(std::string_view before, const QString &shown);

}  // namespace borvane
