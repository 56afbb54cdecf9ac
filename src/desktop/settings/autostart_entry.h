#pragma once

#include <QString>
#include <string_view>

namespace borvane {

/// borvane.desktop in the user's folder of autostart entries.
QString UserAutostartFile();

/// The file by which a desktop of the freedesktop.org kind starts the program at each login. A write that fails does
/// nothing and reports nothing.
class AutostartEntry {
 public:
  explicit AutostartEntry(QString file_name);

  /// Has the desktop start `program`, a path of the system's own bytes, under the name `title`. At the start of a run
  /// only an entry for another program is replaced, and none that is switched off by "Hidden" or cannot be read: the
  /// desktop's own settings may have changed it since.
  void Write(std::string_view title, std::string_view program);

  void Delete();

  /// From now on Write is a choice that the user has just made.
  void EndStart() { is_start_ = false; }

 private:
  QString file_name_;
  bool is_start_ = true;
};

}  // namespace borvane
