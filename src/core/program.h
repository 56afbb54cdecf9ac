#pragma once

#include "controls/form_set.h"
#include "core/module1.h"
#include "platform/platform.h"
#include "reports/report_state.h"

namespace borvane {

/// One run of the program: its windows, what outlives them, and the platform that it runs on. There is one at a time;
/// while it lives, the windows' names, `Module1` and `platform()` mean its own.
class Program final : public FormSet {
 public:
  Program(const Platform &services, FormHost &host);
  ~Program() override;

  const Platform platform;
  Module1Variables variables;
  ReportState report;
};

/// The running program.
inline Program &program() { return static_cast<Program &>(*current); }

/// What the running program asks of its host.
inline const Platform &platform() { return program().platform; }

}  // namespace borvane
