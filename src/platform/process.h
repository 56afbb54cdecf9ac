#pragma once

#include <string>
#include <string_view>

namespace borvane {

/// What ends the file name of every executable on this system.
#ifdef _WIN32
inline constexpr std::string_view executable_suffix = ".exe";
#else
inline constexpr std::string_view executable_suffix = "";
#endif

/// The running process.
class Process {
 public:
  /// Shows the report of a run-time error that nothing has caught. `number` is 0 for an error that is none of the
  /// program's own.
  virtual void ReportRuntimeError(int number, std::string_view description) = 0;

  /// The folder of the program's executable, without a separator at its end, as the system's own bytes.
  virtual std::string Folder() = 0;

  /// The name of the executable, without a folder and without executable_suffix.
  virtual std::string ExecutableName() = 0;

  /// Ends the process at once, with that status. Does not return.
  virtual void End(int status) = 0;

 protected:
  ~Process() = default;
};

}  // namespace borvane
