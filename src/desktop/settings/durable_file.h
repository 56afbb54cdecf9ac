#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace borvane {

/// Creates a folder, with those above it that are missing, so that a power cut does not undo it. Does nothing when it
/// exists or cannot be created.
void MakeFolder(const QString &folder);

/// The content of a file: empty when there is no such file, nothing when it cannot be read.
std::optional<QByteArray> ContentOfFile(const QString &name);

/// Replaces a file, or creates it, whole or not at all, with the permissions of the file `like`. Returns whether the
/// new content is on the disk, where it survives a power cut.
bool WriteFileDurably(const QString &name, const QByteArray &content, const QString &like);

/// Deletes a file so that a power cut does not bring it back. Does nothing when there is none or it cannot be deleted.
void DeleteFileDurably(const QString &name);

}  // namespace borvane
