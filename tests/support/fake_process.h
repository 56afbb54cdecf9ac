#pragma once

#include "basic/number.h"
#include "platform/process.h"
#include "support/trace.h"

namespace borvane {

/// The process would be gone here. It is no std::exception, so that no trap and no door of the program holds it.
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

  [[noreturn]] void End(int status) override {
    trace_.Add("end " + IntegerText(status));
    throw ProcessEnded{status};
  }

 private:
  Trace &trace_;
};

}  // namespace borvane
