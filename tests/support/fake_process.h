#pragma once

#include "basic/number.h"
#include "platform/process.h"
#include "support/trace.h"

namespace borvane {

/// The process would be gone here. It is no std::exception, so that nothing in the program catches it.
struct ProcessEnded {
  int status = 0;
};

/// A process whose end is thrown to the test.
class FakeProcess final : public Process {
 public:
  explicit FakeProcess(Trace &trace) : trace_(trace) {}

  void ReportRuntimeError(int number, std::string_view description) override {
    trace_.Add("error report " + IntegerText(number) + " " + std::string(description));
  }

  std::string Folder() override { return folder; }
  std::string ExecutableName() override { return executable_name; }

  [[noreturn]] void End(int status) override {
    trace_.Add("end " + IntegerText(status));
    throw ProcessEnded{status};
  }

  std::string folder = "/programs";
  std::string executable_name = "borvane";

 private:
  Trace &trace_;
};

}  // namespace borvane
