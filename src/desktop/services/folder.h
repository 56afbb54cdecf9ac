#pragma once

class QFileDevice;
class QString;

namespace borvane {

/// Makes a folder, with those above it that are missing, so that a power cut does not take it away again. Does nothing
/// when it is there or cannot be made.
void MakeFolder(const QString &folder);

/// Has the bytes that were written to a file survive a power cut. Gives whether they do, as far as the system tells.
bool WriteThrough(QFileDevice &file);

/// Has the names in a folder survive a power cut: the content of a file is written through with the file, its name with
/// the folder. Does nothing where the system takes care of that.
void WriteThrough(const QString &folder);

}  // namespace borvane
