// What "Submit" does.

#include "basic/number.h"
#include "core/program.h"
#include "core/program_info.h"
#include "feed/service.h"
#include "records/frmRecords.h"
#include "reports/ComPart.h"
#include "reports/felt_magnitude.h"
#include "reports/report_records.h"
#include "reports/reporter_slots.h"

namespace borvane {

namespace {

/// The key of a request that names the area: its name as the records window shows it.
std::string MapKey() {
  // Meant (reports-name-the-area-switched-on): a report should be filed under the area of its event. It goes under the
  // one of the last switching on, or under none.
  return "map=" + frmRecords->Label2(0).Caption();
}

}  // namespace

void ReportForm::Submit() {
  try {
    SendReport();
  } catch (const RuntimeError &) {
    // Meant (lost-report-says-nothing): a report that could not be sent should be reported as such, and its form come
    // back. The thanks stay on show without their first line.
    MousePointer = pointer_normal;
    program().report.FeltScore = 0;
  }
}

void ReportForm::SendReport() {
  constexpr float below_the_window = 6825;
  ReportState &state = program().report;

  MousePointer = pointer_hourglass;
  Command1(button_submit).Enabled = false;
  state.FormTouched = false;

  const std::string details = DetailRecord(*this);

  Frame1.Top = below_the_window;
  Frame2.Visible = true;

  const float magnitude = FeltMagnitude(Combo3.ListIndex(), state.FeltScore);
  Label2(4).Caption = SingleText(magnitude, platform().region.DecimalSeparator());

  // Meant (cancelled-report-is-sent): "Cancel" should stop a report that is on its way. It closes the window; the
  // report goes on with the controls of the window that is gone, and loads no new one.
  if (Ask("cmd=puta&" + MapKey() + "&strout=" + SummaryRecord(*this, magnitude)) != "ok") {
    platform().message_box.Show("Failed to submit. Please wait a few minutes and try again.", program_title,
                                MessageButtons::Ok, MessageIcon::None);
    Command1(button_submit).Enabled = true;
    // Meant (refused-report-keeps-the-hourglass): the pointer, the score and the thanks should be taken back. They stay
    // as they are, and a retry builds on the score.
    return;
  }

  Ask("cmd=putb&" + MapKey() + "&strout=" + details);

  Ask("cmd=putc&zip=" + Text1(text_zip).Text() + "&" + MapKey() + "&strout=" + details);

  // Meant (name-never-left-is-user-minus-one): a name that is still being typed should have a slot. One is looked for
  // when the box is left; until then its number is -1, and the value is called User-1.
  SaveReporter(state.UserSlot, Text1(text_name).Text());

  Label2(2).Visible = true;

  MousePointer = pointer_normal;
  state.FeltScore = 0;
}

/// Sends a command to the service and returns its answer.
std::string ReportForm::Ask(std::string_view query) {
  std::string answer = Inet1.OpenURL(ServiceAddress(query), Inet::as_text);
  WaitWhileBusy();
  return answer;
}

void ReportForm::WaitWhileBusy() {
  while (Inet1.StillExecuting())
    platform().events.LetEventsRun();
}

}  // namespace borvane
