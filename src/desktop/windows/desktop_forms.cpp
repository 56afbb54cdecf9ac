#include "desktop/windows/desktop_forms.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <vector>

#include "controls/control.h"
#include "controls/menu.h"
#include "core/dispatch.h"
#include "desktop/widgets/fonts.h"
#include "desktop/widgets/label_text.h"
#include "desktop/widgets/popup_menu.h"
#include "desktop/widgets/timer_binder.h"
#include "desktop/widgets/twips.h"
#include "desktop/windows/form_window.h"
#include "desktop/windows/info_windows.h"
#include "desktop/windows/records_window.h"
#include "desktop/windows/report_window.h"
#include "desktop/windows/settings_window.h"
#include "info/banner.h"
#include "info/nobotherfrm.h"
#include "records/frmRecords.h"
#include "reports/ComPart.h"
#include "settings/conffrm.h"

namespace borvane {

namespace {

/// Objects of Qt that may go only when the event that they are handling has ended.
struct DeleteLater {
  void operator()(QObject *object) const { object->deleteLater(); }
};

std::unique_ptr<FormWindow, DeleteLater> MakeWindow(FormBase &form, FocusTracker &focus) {
  std::unique_ptr<FormWindow, DeleteLater> window;
  if (auto *records = dynamic_cast<RecordsForm *>(&form))
    window.reset(new RecordsWindow(*records, focus));
  else if (auto *settings = dynamic_cast<SettingsForm *>(&form))
    window.reset(new SettingsWindow(*settings, focus));
  else if (auto *notice = dynamic_cast<BannerForm *>(&form))
    window.reset(new BannerWindow(*notice, focus));
  else if (auto *note = dynamic_cast<UserNoteForm *>(&form))
    window.reset(new UserNoteWindow(*note, focus));
  else if (auto *report = dynamic_cast<ReportForm *>(&form))
    window.reset(new ReportWindow(*report, focus));
  else
    window.reset(new FormWindow(form, focus));
  window->Build();
  return window;
}

/// The entry for the form; null when there is none. The entries are constant where the list is.
template <class LoadedForms>
auto *FindIn(LoadedForms &forms, const FormBase &form) {
  const auto loaded = std::find_if(forms.begin(), forms.end(), [&](const auto &other) { return &other.form == &form; });
  return loaded == forms.end() ? nullptr : &*loaded;
}

}  // namespace

struct DesktopForms::LoadedForm {
  FormBase &form;
  bool is_on_top = false;
  std::vector<std::unique_ptr<TimerBinder, DeleteLater>> timers = {};
  std::unique_ptr<FormWindow, DeleteLater> window = nullptr;
};

DesktopForms::DesktopForms() = default;

DesktopForms::~DesktopForms() = default;

void DesktopForms::FormLoaded(FormBase &form) { AddTimers(form, forms_.emplace_back(LoadedForm{form})); }

void DesktopForms::FormUnloaded(FormBase &form) {
  if (open_menu_ != nullptr && menu_form_ == &form)
    open_menu_->close();
  LoadedForm *loaded = Find(form);
  Release(*loaded);
  if (loaded->window != nullptr)
    loaded->window->hide();
  forms_.remove_if([&](const LoadedForm &other) { return &other == loaded; });
}

void DesktopForms::ShowForm(FormBase &form, FormBase *owner, bool with_focus) {
  LoadedForm &loaded = *Find(form);
  if (loaded.window == nullptr) {
    loaded.window = MakeWindow(form, focus_);
    loaded.window->KeepOnTop(loaded.is_on_top);
  }
  loaded.window->Present(owner == nullptr ? nullptr : WindowOf(*owner), with_focus);
}

void DesktopForms::HideForm(FormBase &form) {
  if (FormWindow *window = WindowOf(form))
    window->Withdraw();
}

void DesktopForms::RepaintForm(FormBase &form) {
  if (FormWindow *window = WindowOf(form))
    window->repaint();
}

void DesktopForms::KeepOnTop(FormBase &form, bool on) {
  LoadedForm &loaded = *Find(form);
  loaded.is_on_top = on;
  if (loaded.window != nullptr)
    loaded.window->KeepOnTop(on);
}

Size DesktopForms::FirstScreen() {
  const QScreen *screen = QGuiApplication::primaryScreen();
  const QSize size = screen == nullptr ? QSize() : screen->size();
  return {.width = TwipsOf(size.width()), .height = TwipsOf(size.height())};
}

Size DesktopForms::SizeOfText(std::string_view text, const Font &font) {
  const QSize size = TextSize(LabelText(text), ScreenFont(font));
  return {.width = TwipsOf(size.width()), .height = TwipsOf(size.height())};
}

void DesktopForms::ShowPopupMenu(FormBase &form, Menu &menu) {
  // One menu at a time: a timer may ask for another while the user looks at the first.
  if (open_menu_ != nullptr)
    return;
  MenuItem *chosen = ChosenEntry(form, menu);
  // The form may have been unloaded meanwhile.
  if (chosen != nullptr && Find(form) != nullptr)
    Dispatch([chosen] { chosen->Click.Raise(); });
}

MenuItem *DesktopForms::ChosenEntry(const FormBase &form, const Menu &menu) {
  PopupMenu popup(menu);
  open_menu_ = &popup;
  menu_form_ = &form;
  FormWindow *window = WindowOf(form);
  if (window != nullptr)
    window->ForgetPressedKeys();
  return popup.Choose(window, focus_.menu_place());
}

FormWindow *DesktopForms::WindowOf(const FormBase &form) const {
  const LoadedForm *loaded = FindIn(forms_, form);
  return loaded == nullptr ? nullptr : loaded->window.get();
}

void DesktopForms::Stop() {
  is_stopped_ = true;
  if (open_menu_ != nullptr)
    open_menu_->close();
  for (LoadedForm &loaded : forms_)
    Release(loaded);
}

DesktopForms::LoadedForm *DesktopForms::Find(const FormBase &form) { return FindIn(forms_, form); }

void DesktopForms::AddTimers(const Container &container, LoadedForm &loaded) {
  for (Control *control : container.children()) {
    if (auto *timer = dynamic_cast<TimerControl *>(control))
      loaded.timers.emplace_back(new TimerBinder(*timer));
    if (const auto *inner = dynamic_cast<const Container *>(control))
      AddTimers(*inner, loaded);
  }
}

void DesktopForms::Release(LoadedForm &loaded) {
  for (const auto &timer : loaded.timers)
    timer->Release();
  if (loaded.window != nullptr)
    loaded.window->Release();
}

}  // namespace borvane
