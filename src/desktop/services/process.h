#pragma once

#include <functional>

#include "platform/process.h"

namespace borvane {

/// The running process.
class DesktopProcess final : public Process {
 public:
  /// `stop` is called before an error is reported, so that nothing of the program runs meanwhile. `finish` is called at
  /// the end, to write what has to be kept.
  DesktopProcess(std::function<void()> stop, std::function<void()> finish);

  void ReportRuntimeError(int number, std::string_view description) override;
  std::string Folder() override;
  std::string ExecutableName() override;
  [[noreturn]] void End(int status) override;

 private:
  std::function<void()> stop_;
  std::function<void()> finish_;
};

}  // namespace borvane
