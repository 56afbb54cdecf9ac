#pragma once

#include <memory>
#include <vector>

#include "controls/form.h"

namespace borvane {

/// The windows that are loaded, in the order of their loading. There is one of each kind at the most.
class FormSet {
 public:
  explicit FormSet(FormHost &host);
  FormSet(const FormSet &) = delete;
  FormSet &operator=(const FormSet &) = delete;
  virtual ~FormSet();

  FormHost &host() const { return host_; }

  /// The window of kind T; loads it first if it is not loaded. What its Load handler refers to is the window itself.
  template <class T>
  T &Reference() {
    if (T *loaded = IfLoaded<T>())
      return *loaded;
    auto form = std::make_unique<T>();
    T &reference = *form;
    Load(std::move(form), &kind_of<T>);
    return reference;
  }

  /// The window of kind T, or null when it is not loaded.
  template <class T>
  T *IfLoaded() const {
    FormBase *form = Loaded(&kind_of<T>);
    return form == nullptr ? nullptr : static_cast<T *>(form);
  }

  /// Asks `form` through its QueryUnload and unloads it unless it refuses. Returns whether it has been unloaded. Inside
  /// an event its memory stays until the outermost event has ended, since one of its own handlers may be running.
  bool Unload(FormBase &form, UnloadMode mode = UnloadMode::Code);

  /// The loaded windows.
  std::vector<FormBase *> Forms() const;

  /// Around every event of the outside world; they nest.
  void BeginEvent() { ++event_depth_; }
  void EndEvent();

 private:
  /// Its address identifies the kind of a window. Every use of a window's name looks for it, also within a scan's rows.
  template <class T>
  static constexpr char kind_of = 0;

  struct LoadedForm {
    const char *kind;
    std::unique_ptr<FormBase> form;
  };

  FormBase *Loaded(const char *kind) const {
    for (const LoadedForm &loaded : forms_) {
      if (loaded.kind == kind)
        return loaded.form.get();
    }
    return nullptr;
  }

  void Load(std::unique_ptr<FormBase> form, const char *kind);

  FormHost &host_;
  std::vector<LoadedForm> forms_;
  std::vector<std::unique_ptr<FormBase>> retired_;
  int event_depth_ = 0;
};

/// The windows of the running program. The program sets and clears it; nothing else in the program is global.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): the only one
inline constinit FormSet *current = nullptr;

/// A window's own name. `->` is the reference that loads the window.
template <class T>
struct Form {
  T *operator->() const { return &current->Reference<T>(); }
  T &operator*() const { return current->Reference<T>(); }

  /// The window if it is loaded; never loads it.
  T *IfLoaded() const { return current->IfLoaded<T>(); }

  /// Unloads the window if it is loaded.
  void Unload() const {
    if (T *form = IfLoaded())
      current->Unload(*form);
  }
};

}  // namespace borvane
