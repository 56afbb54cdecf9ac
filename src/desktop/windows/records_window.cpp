#include "desktop/windows/records_window.h"

#include "desktop/windows_1252.h"
#include "records/frmRecords.h"

namespace borvane {

RecordsWindow::RecordsWindow(RecordsForm &form, FocusTracker &focus) : FormWindow(form, focus), records_(form) {}

void RecordsWindow::Build() {
  FormWindow::Build();
  // The keys move in the list of events before the user has chosen anything else.
  findChild<QWidget *>(ShownText(records_.ListView1.FullName()))->setFocus();
}

}  // namespace borvane
