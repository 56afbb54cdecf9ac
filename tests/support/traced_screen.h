#pragma once

#include <functional>

#include "controls/form.h"
#include "support/trace.h"

namespace borvane {

/// A screen that writes down which windows come and go.
class TracedScreen final : public FormHost {
 public:
  explicit TracedScreen(Trace &trace) : trace_(trace) {}

  /// Is called with each window that comes to life, before its Load handler runs.
  std::function<void(FormBase &)> on_load;

  void FormLoaded(FormBase &form) override {
    trace_.Add("load " + std::string(form.name()));
    if (on_load)
      on_load(form);
  }

  void FormUnloaded(FormBase &form) override { trace_.Add("unload " + std::string(form.name())); }

  void ShowForm(FormBase &form, FormBase *owner) override {
    trace_.Add("show " + std::string(form.name()) + (owner == nullptr ? "" : " above " + std::string(owner->name())));
  }

  void HideForm(FormBase &form) override { trace_.Add("hide " + std::string(form.name())); }

 private:
  Trace &trace_;
};

}  // namespace borvane
