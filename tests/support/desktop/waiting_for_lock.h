#pragma once

#include <QString>

namespace borvane {

/// Waits until somebody waits for the write lock, which another one holds. Gives whether somebody does.
bool AwaitWaiting(const QString &lock_file);

}  // namespace borvane
