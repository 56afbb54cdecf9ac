#include "controls/form_set.h"

#include <algorithm>

namespace borvane {

FormSet::FormSet(FormHost &host) : host_(host) {}

FormSet::~FormSet() = default;

FormBase *FormSet::Loaded(const std::type_info &kind) const {
  for (const auto &form : forms_) {
    const FormBase &loaded = *form;
    if (typeid(loaded) == kind)
      return form.get();
  }
  return nullptr;
}

void FormSet::Load(std::unique_ptr<FormBase> form) {
  FormBase &loaded = *form;
  forms_.push_back(std::move(form));
  host_.FormLoaded(loaded);
  loaded.Form_Load();
}

bool FormSet::Unload(FormBase &form, UnloadMode mode) {
  Integer cancel = 0;
  form.Form_QueryUnload(cancel, mode);
  if (cancel != 0)
    return false;
  form.Hide();
  const auto place =
      std::find_if(forms_.begin(), forms_.end(), [&](const auto &loaded) { return loaded.get() == &form; });
  if (place == forms_.end())
    return false;
  host_.FormUnloaded(form);
  retired_.push_back(std::move(*place));
  forms_.erase(place);
  if (event_depth_ == 0)
    retired_.clear();
  return true;
}

std::vector<FormBase *> FormSet::Forms() const {
  std::vector<FormBase *> forms;
  for (const auto &form : forms_)
    forms.push_back(form.get());
  return forms;
}

void FormSet::EndEvent() {
  if (--event_depth_ == 0)
    retired_.clear();
}

}  // namespace borvane
