// The menu entries of the list that lead to the felt reports.

#include "core/program.h"
#include "core/program_info.h"
#include "records/frmRecords.h"
#include "reports/ComPart.h"
#include "reports/show_reports.h"

namespace borvane {

void RecordsForm::mnuReportIt_Click() {
  constexpr float top_of_form = 510;

  // Meant (second-report-needs-cancel): the form should come in front of the thanks for the report before. It comes
  // back below them, and they go with the window alone.
  ComPart->Frame1.Top = top_of_form;
  ComPart->Frame1.Visible = true;

  ComPart->Label2(1).Caption = MakeEventKey();
  ComPart->Label2(1).Visible = true;

  ComPart->Show();

  platform().message_box.Show("Your name will not be sent over the Internet", program_title, MessageButtons::Ok,
                              MessageIcon::None);
}

void RecordsForm::mnuViewReps_Click() {
  ComPart->Frame1.Visible = false;
  ComPart->Frame2.Visible = false;
  ComPart->ListView1.Visible = true;
  ComPart->Label2(1).Caption = MakeEventKey();
  ComPart->Show();

  ReportFields fields;
  ShowReports(fields);
}

}  // namespace borvane
