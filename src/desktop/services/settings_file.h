#pragma once

class QByteArray;
class QString;

namespace borvane {

/// Whether `content` is a settings file that has been written to its end: nothing but sections in brackets, remarks
/// behind a semicolon and lines "name=value" with closed quotes, the last one ended by a line feed.
bool IsWholeSettingsFile(const QByteArray &content);

/// Copies a damaged settings file to a new name beside it, such as "Borvane.conf.damaged-1", since the next write
/// leaves out what cannot be read. Does nothing when the file is whole or missing, or has been copied before as it
/// stands.
void KeepDamagedFileAside(const QString &name);

}  // namespace borvane
