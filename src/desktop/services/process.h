#pragma once

#include <functional>

#include "platform/process.h"

namespace borvane {

/// The running process.
class DesktopProcess final : public Process {
 public:
  /// `stop` is called before an error is reported, so that nothing of the program runs behind the report.
  explicit DesktopProcess(std::function<void()> stop);

  void ReportRuntimeError(int number, std::string_view description) override;
  [[noreturn]] void End(int status) override;

 private:
  std::function<void()> stop_;
};

}  // namespace borvane
