#include "core/start.h"

#include "core/load_settings.h"
#include "core/program.h"
#include "info/banner.h"
#include "records/frmRecords.h"

namespace borvane {

void Main() {
  LoadSettings();

  frmRecords->Show();

  if (Module1->ShowBanner != flag_false)
    banner->Show();
}

void QuitProgram() {
  frmRecords->ListView1.ListItems.Clear();
  frmRecords->ListView2.ListItems.Clear();

  // The records window refuses and hides; the loop continues regardless.
  for (FormBase *form : current->Forms())
    current->Unload(*form);

  platform().process.End(0);
}

}  // namespace borvane
