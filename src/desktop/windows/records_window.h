#pragma once

#include "desktop/windows/form_window.h"

namespace borvane {

struct RecordsForm;

/// The records window. Its controls are where the form puts them.
class RecordsWindow final : public FormWindow {
 public:
  RecordsWindow(RecordsForm &form, FocusTracker &focus);

  void Build() override;

 private:
  RecordsForm &records_;
};

}  // namespace borvane
