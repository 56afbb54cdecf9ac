#include "reports/ComPart.h"

#include "basic/number.h"
#include "basic/text.h"
#include "core/program.h"
#include "core/program_info.h"
#include "core/registry.h"
#include "feed/hosts.h"
#include "reports/felt_magnitude.h"
#include "reports/reporter_slots.h"
#include "reports/show_reports.h"
#include "settings/values.h"

namespace borvane {

ReportForm::ReportForm()
    : FormBase({.Name = "ComPart", .Caption = "Community Participation", .ClientWidth = 7455, .ClientHeight = 5865}) {
  for (int i = 0; i < Text1.Count(); ++i)
    Text1(i).LostFocus = [this, i] { Text1_LostFocus(i); };
  Text1(text_zip).GotFocus = [this] { Text1_GotFocus(); };
  Check1.Click = [this] { Check1_Click(); };
  for (int i = 0; i < Check2.Count(); ++i)
    Check2(i).Click = [this, i] { Check2_Click(i); };
  Combo2.Click = [this] { Combo2_Click(); };
  for (int i = 0; i < Command1.Count(); ++i)
    Command1(i).Click = [this, i] { Command1_Click(i); };
  Frame2.MouseMove = [this](const MouseState &) { ClearUnderlines(); };
  for (int i = 0; i < Label3.Count(); ++i)
    Label3(i).MouseMove = [this, i](const MouseState &) { Label3_MouseMove(i); };
  for (const int i : {link_other_countries, link_usa, link_reports})
    Label3(i).Click = [this, i] { Label3_Click(i); };
  Timer1.Timer = [this] { Timer1_Timer(); };
}

void ReportForm::Form_Load() {
  Text1(text_zip).Text = ReadSetting(Setting::Tzip);
  Text1(text_school).Text = ReadSetting(Setting::MySchool);

  for (const char *action :
       {"Froze up", "Duck", "Sat and waited", "sat under table", "stand under door frame", "Run to exterior"})
    Combo1.AddItem(action);

  // Meant (felt-score-outlives-the-window): a window that opens with nothing ticked should begin at a score of 0. It
  // goes on from the clicks in one that has been cancelled.
  program().report.UserSlot = -1;
}

void ReportForm::Form_MouseMove(const MouseState & /*mouse*/) { ClearUnderlines(); }

void ReportForm::Text1_GotFocus() {
  // Meant (submit-waits-for-the-zip-box): "Submit" should be enabled by answers alone. Nothing looks at them before the
  // zip box has had the keyboard once.
  Timer1.Enabled = true;
}

void ReportForm::Text1_LostFocus(int i) {
  switch (i) {
    case text_name:
      TakeReporter();
      return;
    case text_zip:
      // Meant (any-zip-is-taken): a zip code that is no number should be refused. It is selected, in a box that has
      // just been left, and is stored and sent like any other.
      if (!IsNumeric(Text1(i).Text()))
        Text1(i).Selection = {.start = 0, .length = static_cast<int>(Text1(i).Text().size())};
      SaveSetting(Setting::Tzip, Text1(i).Text());
      break;
    case text_school:
      Text1(i).Text = ProperCase(Text1(i).Text());
      SaveSetting(Setting::MySchool, Text1(i).Text());
      break;
    default:
      break;
  }
  program().report.FormTouched = true;
}

/// Finds the slot of the reporter whose name has been entered.
void ReportForm::TakeReporter() {
  Text1(text_name).Text = ProperCase(Text1(text_name).Text());

  const Reporter reporter = FindReporter(Text1(text_name).Text());
  program().report.UserSlot = reporter.slot;
  if (reporter.is_known && HasReportedToday(reporter.slot)) {
    platform().message_box.Show("You already filled a report today", program_title, MessageButtons::Ok,
                                MessageIcon::None);
    current->Unload(*this);
    return;
  }
  program().report.FormTouched = true;
}

void ReportForm::Check1_Click() {
  const bool is_at_school = Check1.Value() == 1;
  Label1(text_school).Enabled = is_at_school;
  Text1(text_school).Enabled = is_at_school;
}

void ReportForm::Check2_Click(int i) {
  program().report.FeltScore += ScoreOfBox(i, Check2(check_pictures_moved).Value() == 1);
}

void ReportForm::Combo2_Click() {
  // Meant (strengths-add-up): another choice should take the place of the one before. Each click adds its own strength.
  program().report.FeltScore += ScoreOfStrength(Combo2.ListIndex());
}

void ReportForm::Command1_Click(int i) {
  if (i == button_submit)
    Submit();
  else
    current->Unload(*this);
}

void ReportForm::Label3_Click(int i) {
  // Meant (felt-forms-are-crossed): the form for places outside the USA should be the one of unknown places, and that
  // of California be called so. Each link opens the page that it has always opened.
  switch (i) {
    case link_other_countries:
      platform().shell.Open(AddressOf(BrowserEndpoint::FeltForms, "/shake/ca/html/unknown_form.html"), this);
      break;
    case link_usa:
      platform().shell.Open(AddressOf(BrowserEndpoint::FeltForms, "/shake/ous/html/unknown_form.html"), this);
      break;
    default:
      ReportFields fields;
      ShowReports(fields);
      ListView1.Visible = true;
      Frame2.Visible = false;
      break;
  }
}

void ReportForm::Label3_MouseMove(int i) {
  // Meant (heading-stays-underlined): the heading is no link and should never be underlined. The pointer underlines it
  // like the links beside it, and only theirs are taken away again.
  Label3(i).Underline = true;
}

void ReportForm::ClearUnderlines() {
  for (const int i : {link_other_countries, link_usa, link_reports})
    Label3(i).Underline = false;
}

void ReportForm::Timer1_Timer() {
  // Meant (submit-comes-back-while-sending): "Submit" should stay disabled until a report has been answered. What
  // decides is the form alone, so that it is enabled again at the next tick, and a second click meets a busy client.
  if (Combo1.Text().empty() || Combo3.Text().empty() || Combo2.Text().empty()) {
    Command1(button_submit).Enabled = false;
    return;
  }

  // Meant (untouched-form-needs-no-name): a report should have a name, an age or a zip code whatever was done before.
  // That is asked for only once a text box has been left, and no more after a submission.
  const bool has_no_reporter =
      Text1(text_age).Text().empty() && Text1(text_name).Text().empty() && Text1(text_zip).Text().empty();
  if (program().report.FormTouched && has_no_reporter) {
    Command1(button_submit).Enabled = false;
    return;
  }

  Command1(button_submit).Enabled = true;
}

}  // namespace borvane
