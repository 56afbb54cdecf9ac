#pragma once

#include <QString>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace borvane {

/// Intercepts the calling thread's use of the disk while it lives: the system calls that concern one folder are
/// recorded and can be made to fail.
class WatchedDisk {
 public:
  explicit WatchedDisk(const QString &folder);
  ~WatchedDisk();
  WatchedDisk(const WatchedDisk &) = delete;
  WatchedDisk &operator=(const WatchedDisk &) = delete;

  enum class Fault {
    once,      ///< the call with that number fails
    for_good,  ///< that call fails and all after it
    kill,      ///< in front of that call the process is killed
    sync,      ///< the number counts only what brings something to the disk
    half,      ///< the write with that number takes half of what it is given
    full,      ///< the same, and the write after it fails
    state      ///< the number counts only what asks for the state of an open file
  };

  /// Numbers count from 1, and from the start of this object.
  void Break(Fault fault, int number) { fault_ = fault, number_ = number; }

  /// `event` happens when the disk is full, in front of the write that fails.
  void WhenFull(std::function<void()> event) { when_full_ = std::move(event); }

  /// Whether the fault has struck.
  bool HasStruck() const { return has_struck_; }

  /// What has been done so far in the order of the calls, those of lock files left out: "make FOLDER", "name FILE" when
  /// a file has got its name, "sync FOLDER", "sync content" for a file whatever its name.
  const std::vector<std::string> &done() const { return done_; }

  // The system's calls ask these.

  bool IsWithin(const std::string &path) const { return (path + '/').starts_with(folder_); }

  /// Counts a call and gives whether it has to fail.
  bool Fails(bool is_sync);

  /// Counts a write and gives the number of bytes that it may take of `count`; nothing when it has to fail.
  std::optional<std::size_t> Written(std::size_t count);

  /// Counts a question for a file's state and gives whether it has to fail.
  bool StateFails();

  void Note(const char *what, const std::string &path);

 private:
  std::string folder_;  // ends with a slash
  std::vector<std::string> done_;
  Fault fault_ = Fault::once;
  int number_ = 0;
  int calls_ = 0;
  int syncs_ = 0;
  int writes_ = 0;
  int states_ = 0;
  std::function<void()> when_full_ = [] {};
  bool has_struck_ = false;
};

}  // namespace borvane
