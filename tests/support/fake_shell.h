#pragma once

#include "platform/shell.h"
#include "support/trace.h"

namespace borvane {

/// A desktop that records what it is asked to open.
class FakeShell final : public Shell {
 public:
  explicit FakeShell(Trace &trace) : trace_(trace) {}

  void Open(std::string_view address, FormBase *owner) override {
    trace_.Add("open " + std::string(address) + (owner == nullptr ? "" : " for " + std::string(owner->name())));
  }

  void OpenFile(std::string_view path, FormBase *owner) override {
    trace_.Add("open-file " + std::string(path) + (owner == nullptr ? "" : " for " + std::string(owner->name())));
  }

 private:
  Trace &trace_;
};

}  // namespace borvane
