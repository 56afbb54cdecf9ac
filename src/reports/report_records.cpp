#include "reports/report_records.h"

#include "basic/number.h"
#include "basic/text.h"
#include "feed/service.h"
#include "reports/ComPart.h"

namespace borvane {

std::string SummaryRecord(ReportForm &form, float magnitude) {
  std::string record = VersionDigits();
  record.append("|").append(form.Label2(1).Caption());
  record.append("|").append(form.Text1(ReportForm::text_age).Text());
  record.append("|").append(Trim(InvariantText(magnitude)));
  record.append("|").append(IntegerText(form.Check2(ReportForm::check_scared).Value()));
  record.append("|").append(IntegerText(form.Check2(ReportForm::check_at_school).Value()));
  record.append("|").append(form.Text1(ReportForm::text_zip).Text());
  return record;
}

std::string DetailRecord(ReportForm &form) {
  // Meant (typed-separators-shift-fields): a "|" or "&" that a user types should be escaped. It is sent as it is, so
  // that a "|" begins a further field and an "&" a further key of the request. The service takes records as they are.
  std::string answers;
  for (const int i : {ReportForm::text_age, ReportForm::text_zip, ReportForm::text_school, ReportForm::text_comments})
    answers.append("|").append(form.Text1(i).Text());
  answers.append("|").append(IntegerText(form.Check1.Value()));
  for (int i = 0; i < form.Check2.Count(); ++i)
    answers.append("|").append(IntegerText(form.Check2(i).Value()));
  for (const ComboBox *box : {&form.Combo1, &form.Combo2, &form.Combo3})
    answers.append("|").append(IntegerText(box->ListIndex()));

  // Meant (detail-record-has-an-empty-field): the version should be followed by the age. The answers begin with a
  // separator of their own, and readers of the records count the empty field.
  return VersionDigits() + "|" + answers;
}

}  // namespace borvane
