#pragma once

#include <string>
#include <vector>

#include "controls/form_set.h"
#include "controls/menu.h"

namespace borvane {

using Lines = std::vector<std::string>;

/// A screen that records what it is asked to do.
struct RecordingHost : FormHost {
  Lines seen;

  void FormLoaded(FormBase &form) override { seen.push_back("load " + std::string(form.name())); }
  void FormUnloaded(FormBase &form) override { seen.push_back("unload " + std::string(form.name())); }
  void ShowForm(FormBase &form, FormBase *owner, bool with_focus) override {
    const std::string above = owner == nullptr ? "" : " above " + std::string(owner->name());
    const std::string focus = form.takes_focus() && !with_focus ? " without the focus" : "";
    seen.push_back("show " + std::string(form.name()) + above + focus);
  }
  void HideForm(FormBase &form) override { seen.push_back("hide " + std::string(form.name())); }
  void RepaintForm(FormBase &form) override { seen.push_back("repaint " + std::string(form.name())); }
  void KeepOnTop(FormBase &form, bool on) override {
    seen.push_back((on ? "topmost " : "not-topmost ") + std::string(form.name()));
  }
  Size FirstScreen() override { return {.width = 19200, .height = 15360}; }
  Size SizeOfText(std::string_view text, const Font &font) override {
    constexpr float window_font = 9;  // points
    const float scale = font.size == 0 ? 1 : font.size / window_font;
    const float per_character = (font.bold ? 100.0F : 90.0F) * (font.name == "Wide" ? 2.0F : 1.0F);
    return {.width = scale * per_character * static_cast<float>(text.size()), .height = scale * 195};
  }
  void ShowPopupMenu(FormBase &form, Menu &menu) override {
    seen.push_back("popup " + menu.FullName() + " of " + std::string(form.name()));
  }
};

/// The windows of one test.
struct Windows {
  RecordingHost host;
  FormSet set{host};

  Windows() { current = &set; }
  ~Windows() { current = nullptr; }
  Windows(const Windows &) = delete;
  Windows &operator=(const Windows &) = delete;
};

}  // namespace borvane
