#pragma once

#include <QPointer>
#include <list>
#include <memory>

#include "controls/form.h"
#include "desktop/widgets/focus_tracker.h"

namespace borvane {

class FormWindow;
class MenuItem;
class PopupMenu;
class TimerBinder;

/// Puts the program's windows on the screen. A loaded window costs no more than its timers until it is first shown.
class DesktopForms final : public FormHost {
 public:
  DesktopForms();
  DesktopForms(const DesktopForms &) = delete;
  DesktopForms &operator=(const DesktopForms &) = delete;
  ~DesktopForms();

  void FormLoaded(FormBase &form) override;
  void FormUnloaded(FormBase &form) override;
  void ShowForm(FormBase &form, FormBase *owner, bool with_focus) override;
  void HideForm(FormBase &form) override;
  void RepaintForm(FormBase &form) override;
  void KeepOnTop(FormBase &form, bool on) override;
  Size FirstScreen() override;
  Size SizeOfText(std::string_view text, const Font &font) override;
  void ShowPopupMenu(FormBase &form, Menu &menu) override;

  /// The window that shows `form`; null while it has never been shown.
  FormWindow *WindowOf(const FormBase &form) const;

  /// No timer ticks and no window takes an event from now on: the program is ending.
  void Stop();
  bool IsStopped() const { return is_stopped_; }

 private:
  struct LoadedForm;

  LoadedForm *Find(const FormBase &form);
  static void AddTimers(const Container &container, LoadedForm &loaded);
  static void Release(LoadedForm &loaded);
  MenuItem *ChosenEntry(const FormBase &form, const Menu &menu);

  FocusTracker focus_;
  std::list<LoadedForm> forms_;
  QPointer<PopupMenu> open_menu_;
  const FormBase *menu_form_ = nullptr;  // the form whose menu is open
  bool is_stopped_ = false;
};

}  // namespace borvane
