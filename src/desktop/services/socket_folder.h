#pragma once

#include <QString>

namespace borvane {

/// A folder for local sockets where no other user can create a file: XDG_RUNTIME_DIR or, where there is none, or none
/// of this user's, a folder in the user's cache folder, which is created. Empty when there is no such folder.
QString SocketFolder();

}  // namespace borvane
