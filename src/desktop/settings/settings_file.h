#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace borvane {

// The settings file is UTF-8 text in INI form: section lines "[Hosts]", value lines "name=text", blank lines, and
// comments after "#" or ";". Values before the first section belong to "General". Section and value names are compared
// without regard to case, as in a registry. People edit the file by hand, so a change leaves every other line as it is.
//
// A text is in quotes when a semicolon or a blank at one of its ends would otherwise be lost. Inside and outside quotes
// \" is a quote, \\ a backslash, \n a line feed and \0 a zero byte; any other backslash is itself.

/// The text of a value; nothing when it is missing. The last one of several with the same name counts.
std::optional<QString> ValueIn(const QByteArray &content, const QByteArray &section, const QByteArray &name);

/// `content` with a value changed in its place, or added at the end of its section. `content` has no damage, see below.
QByteArray WithValue(QByteArray content, const QByteArray &section, const QByteArray &name, const QString &text);

/// `content` without its damaged lines, or with what can be read of them: an unclosed quote or section bracket is
/// closed; lines that are neither section, value nor comment, or that hold a zero byte, are left out. Equal to
/// `content` when there is no damage.
QByteArray WithoutDamage(const QByteArray &content);

}  // namespace borvane
