#pragma once

#include <string>
#include <vector>

#include "controls/form_set.h"

namespace borvane {

using Lines = std::vector<std::string>;

/// A screen that writes down what it is told to do.
struct WrittenHost : FormHost {
  Lines seen;

  void FormLoaded(FormBase &form) override { seen.push_back("load " + std::string(form.name())); }
  void FormUnloaded(FormBase &form) override { seen.push_back("unload " + std::string(form.name())); }
  void ShowForm(FormBase &form, FormBase *owner) override {
    const std::string above = owner == nullptr ? "" : " above " + std::string(owner->name());
    seen.push_back("show " + std::string(form.name()) + above);
  }
  void HideForm(FormBase &form) override { seen.push_back("hide " + std::string(form.name())); }
};

/// The windows of one test.
struct Windows {
  WrittenHost host;
  FormSet set{host};

  Windows() { current = &set; }
  ~Windows() { current = nullptr; }
  Windows(const Windows &) = delete;
  Windows &operator=(const Windows &) = delete;
};

}  // namespace borvane
