#pragma once

#include <string_view>

namespace borvane {

/// The running process.
class Process {
 public:
  /// Shows the report of a run-time error that nothing has caught. `number` is 0 for an error that is none of the
  /// program's own.
  virtual void ReportRuntimeError(int number, std::string_view description) = 0;

  /// Ends the process at once, with that status. Does not return.
  virtual void End(int status) = 0;

 protected:
  ~Process() = default;
};

}  // namespace borvane
