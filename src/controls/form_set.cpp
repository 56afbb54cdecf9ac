#include "controls/form_set.h"

#include <algorithm>

namespace borvane {

FormSet::FormSet(FormHost &host) : host_(host) {}

FormSet::~FormSet() = default;

void FormSet::Load(std::unique_ptr<FormBase> form, const char *kind) {
  FormBase &loaded = *form;
  forms_.push_back({kind, std::move(form)});
  host_.FormLoaded(loaded);
  loaded.TakeStartPlace();
  loaded.Form_Load();
}

bool FormSet::Unload(FormBase &form, UnloadMode mode) {
  Integer cancel = 0;
  form.Form_QueryUnload(cancel, mode);
  if (cancel != 0)
    return false;
  form.Hide();
  const auto place =
      std::find_if(forms_.begin(), forms_.end(), [&](const LoadedForm &loaded) { return loaded.form.get() == &form; });
  if (place == forms_.end())
    return false;
  host_.FormUnloaded(form);
  retired_.push_back(std::move(place->form));
  forms_.erase(place);
  if (event_depth_ == 0)
    retired_.clear();
  return true;
}

std::vector<FormBase *> FormSet::Forms() const {
  std::vector<FormBase *> forms;
  for (const LoadedForm &loaded : forms_)
    forms.push_back(loaded.form.get());
  return forms;
}

void FormSet::EndEvent() {
  if (--event_depth_ == 0)
    retired_.clear();
}

}  // namespace borvane
