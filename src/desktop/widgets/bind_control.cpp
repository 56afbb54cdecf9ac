#include <array>

#include "desktop/widgets/binders.h"

namespace borvane {

namespace {

/// Binds `control` by `bind` if it is of kind T; gives null if it is not.
template <class T, Binder *(*bind)(T &, const Surroundings &)>
Binder *BindAs(Control &control, const Surroundings &surroundings) {
  auto *of_kind = dynamic_cast<T *>(&control);
  return of_kind == nullptr ? nullptr : bind(*of_kind, surroundings);
}

constexpr std::array kinds = {
    BindAs<Label, BindLabel>,
    BindAs<Frame, BindFrame>,
    BindAs<TextBox, BindTextBox>,
    BindAs<CheckBox, BindCheckBox>,
    BindAs<OptionButton, BindOptionButton>,
    BindAs<CommandButton, BindCommandButton>,
    BindAs<ComboBox, BindComboBox>,
    BindAs<PictureBox, BindPictureBox>,
    BindAs<Image, BindImage>,
    BindAs<Toolbar, BindToolbar>,
    BindAs<StatusBar, BindStatusBar>,
    BindAs<ListView, BindListView>,
};

}  // namespace

Binder *BindControl(Control &control, const Surroundings &surroundings) {
  for (const auto bind_as : kinds) {
    if (Binder *binder = bind_as(control, surroundings))
      return binder;
  }
  return nullptr;
}

}  // namespace borvane
