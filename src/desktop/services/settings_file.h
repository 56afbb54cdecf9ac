#pragma once

#include <QByteArray>
#include <QString>
#include <map>
#include <optional>

#include "platform/settings_store.h"

namespace borvane {

// The settings file is an INI file in the form of Qt's own: sections in brackets, "General" for values of no other,
// remarks behind a semicolon, and lines "name=text" in UTF-8. A text stands in quotes when a comma, a semicolon, an
// equals sign or a blank at one of its ends could be mistaken, with backslash escapes for what cannot be shown. People
// change the file by hand, so that marks of other editors and systems are taken too.

/// The raw texts of the values, as they stand behind "name=", by section and name.
using SettingsSections = std::map<QByteArray, std::map<QByteArray, QByteArray>>;

/// All that can be read of a settings file, however damaged: what is no value is passed over, and of two values of one
/// name the last one counts.
SettingsSections ReadSections(const QByteArray &content);

/// The content of a file with these values.
QByteArray WriteSections(const SettingsSections &sections);

/// What a raw text stands for. A comma outside quotes, which only a hand writes, is a comma. A number is one that Qt
/// would keep as such; numbers are normally texts.
StoredValue ValueOf(const QByteArray &raw);

/// The raw text of `text`.
QByteArray RawText(const QString &text);

/// Whether `content` is a settings file that has been written to its end: nothing but sections in brackets, remarks
/// and values with closed quotes, the last line ended.
bool IsWholeSettingsFile(const QByteArray &content);

/// What stands in a file: nothing in one that is missing, no answer for one that cannot be read.
std::optional<QByteArray> ContentOfFile(const QString &name);

/// Writes a file and has it on the disk, whole or not at all, with the permissions of the file before or of `like`.
/// Gives whether that could be done.
bool WriteFileThrough(const QString &name, const QByteArray &content, const QString &like);

/// Copies a damaged settings file to a new name beside it, such as "Borvane.conf.damaged-1", since the next write
/// leaves out what cannot be read. Does nothing when the file is whole or has been copied before as it stands. Gives
/// false when the copy cannot be written.
bool KeepDamagedFileAside(const QString &name, const QByteArray &content);

}  // namespace borvane
