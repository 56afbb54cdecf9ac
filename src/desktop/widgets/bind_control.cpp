#include "desktop/widgets/binders.h"

namespace borvane {

namespace {

/// Binds `control` if it is of kind T.
template <class T>
bool BindAs(Binder *(*bind)(T &, const Surroundings &), Control &control, const Surroundings &surroundings,
            Binder *&binder) {
  auto *of_kind = dynamic_cast<T *>(&control);
  if (of_kind != nullptr)
    binder = bind(*of_kind, surroundings);
  return of_kind != nullptr;
}

}  // namespace

Binder *BindControl(Control &control, const Surroundings &surroundings) {
  Binder *binder = nullptr;
  const auto bind_as = [&](auto bind) { return BindAs(bind, control, surroundings, binder); };
  static_cast<void>(bind_as(BindLabel) || bind_as(BindFrame) || bind_as(BindTextBox) || bind_as(BindCheckBox) ||
                    bind_as(BindOptionButton) || bind_as(BindCommandButton) || bind_as(BindComboBox) ||
                    bind_as(BindPictureBox) || bind_as(BindImage) || bind_as(BindToolbar) || bind_as(BindStatusBar) ||
                    bind_as(BindListView));
  return binder;
}

}  // namespace borvane
