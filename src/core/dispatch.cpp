#include "core/dispatch.h"

#include <exception>

#include "basic/failure.h"
#include "core/program.h"

namespace borvane {

namespace {

constexpr int status_runtime_error = 1;

void ReportAndEnd(int number, std::string_view description) {
  Process &process = platform().process;
  process.ReportRuntimeError(number, description);
  process.End(status_runtime_error);
}

}  // namespace

void Dispatch(const std::function<void()> &handler) {
  struct EventScope {
    EventScope() {
      current->BeginEvent();
      platform().settings.BeginEvent();
    }
    ~EventScope() {
      platform().settings.EndEvent();
      current->EndEvent();
    }
  } scope;

  try {
    handler();
  } catch (const RuntimeError &error) {
    ReportAndEnd(error.number(), error.description());
  } catch (const std::exception &error) {
    ReportAndEnd(0, error.what());
  }
}

}  // namespace borvane
