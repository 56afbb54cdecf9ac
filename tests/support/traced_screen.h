#pragma once

#include <functional>

#include "controls/form.h"
#include "controls/menu.h"
#include "support/trace.h"

namespace borvane {

/// A screen that records which windows come and go.
class TracedScreen final : public FormHost {
 public:
  explicit TracedScreen(Trace &trace) : trace_(trace) {}

  /// Called with each new window, before its Load handler runs.
  std::function<void(FormBase &)> on_load;

  /// Called with each window that hides, as what the user leaves in it is.
  std::function<void(FormBase &)> on_hide;

  void FormLoaded(FormBase &form) override {
    trace_.Add("load " + std::string(form.name()));
    if (on_load)
      on_load(form);
  }

  void FormUnloaded(FormBase &form) override { trace_.Add("unload " + std::string(form.name())); }

  void ShowForm(FormBase &form, FormBase *owner, bool with_focus) override {
    trace_.Add("show " + std::string(form.name()) + (owner == nullptr ? "" : " above " + std::string(owner->name())) +
               (form.takes_focus() && !with_focus ? " without the focus" : ""));
  }

  void HideForm(FormBase &form) override {
    trace_.Add("hide " + std::string(form.name()));
    if (on_hide)
      on_hide(form);
  }

  void RepaintForm(FormBase &form) override { trace_.Add("repaint " + std::string(form.name())); }

  void KeepOnTop(FormBase &form, bool on) override {
    trace_.Add((on ? "topmost " : "not-topmost ") + std::string(form.name()));
  }

  Size FirstScreen() override { return {.width = 1280 * 15, .height = 1024 * 15}; }

  /// Every character is 90 twips wide, a bold one 100.
  Size SizeOfText(std::string_view text, const Font &font) override {
    return {.width = (font.bold ? 100.0F : 90.0F) * static_cast<float>(text.size()), .height = 195};
  }

  void ShowPopupMenu(FormBase &form, Menu &menu) override {
    trace_.Add("popup " + menu.FullName() + " of " + std::string(form.name()));
    if (on_popup)
      on_popup(menu);
  }

  /// What the user does with a popup menu.
  std::function<void(Menu &)> on_popup;

 private:
  Trace &trace_;
};

}  // namespace borvane
