#include "reports/show_reports.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "basic/integer.h"
#include "basic/number.h"
#include "basic/text.h"
#include "core/program.h"
#include "core/program_info.h"
#include "feed/service.h"
#include "records/frmRecords.h"
#include "reports/ComPart.h"

namespace borvane {

namespace {

// The fields of a record that the list needs.
constexpr std::size_t field_event = 1;
constexpr std::size_t field_magnitude = 3;
constexpr std::size_t field_zip = 6;

// The columns after the zip code.
constexpr int column_magnitude = 1;
constexpr int column_reports = 2;

std::string NumberText(double number) { return DoubleText(number, platform().region.DecimalSeparator()); }

/// The list's rows, found by their zip codes.
class RowsByZip {
 public:
  explicit RowsByZip(ListRows &rows) : rows_(rows) {
    for (int row = 1; row <= rows.Count(); ++row)
      numbers_[rows(row).Text].push_back(row);
  }

  /// Adds a report to each row of its zip code, or else a row.
  void AddReport(const std::string &zip, std::string_view magnitude) {
    std::vector<int> &numbers = numbers_[zip];
    for (const int row : numbers) {
      // Meant (decimal-comma-drops-fractions): a sum should be read as it was written. It is shown in the form of the
      // user's region and read with a decimal point, so that a comma ends it.
      const double sum = NumericPrefix(rows_(row).SubItems(column_magnitude)) + NumericPrefix(magnitude);
      rows_.SetSubItem(row, column_magnitude, NumberText(sum));
      rows_.SetSubItem(row, column_reports, NumberText(NumericPrefix(rows_(row).SubItems(column_reports)) + 1));
    }
    if (!numbers.empty())
      return;
    rows_.Add({.Text = zip, .SubItemTexts = {magnitude, "1"}});
    numbers.push_back(rows_.Count());
  }

 private:
  ListRows &rows_;
  std::unordered_map<std::string, std::vector<int>> numbers_;
};

/// Takes the line apart. Raises a subscript failure where it has more separators than there are fields.
void ReadFields(std::string_view line, ReportFields &fields) {
  // Meant (short-lines-keep-older-fields): a field that a line lacks should be empty. It keeps what an earlier line had
  // there, so that a line without any separator counts as a zip code with the event and magnitude of the one before.
  for (std::size_t k = 0; !line.empty(); ++k) {
    const std::size_t separator = line.find('|');
    if (separator == std::string_view::npos)
      break;
    if (k >= fields.size())
      Fail(Failure::Subscript);
    fields[k] = line.substr(0, separator);
    line.remove_prefix(separator + 1);
  }
  fields[field_zip] = line;
}

/// Adds the reports on the event to the rows. Returns whether the answer ends with its last line.
bool AddReports(std::string_view answer, std::string_view event, ReportFields &fields, RowsByZip &rows) {
  while (!answer.empty()) {
    const Integer end = Find(answer, "\n");
    // Meant (cut-off-answer-leaves-sums): an answer without its last line feed should be averaged like any other, or
    // refused. Its last line is not read, and the rows keep the sums that they have.
    if (end == 0)
      return false;
    ReadFields(answer.substr(0, static_cast<std::size_t>(end - 1)), fields);
    answer.remove_prefix(static_cast<std::size_t>(end));

    if (fields[field_event] == event)
      rows.AddReport(fields[field_zip], fields[field_magnitude]);
  }
  return true;
}

/// Turns the sums into means.
void TakeMeans(ListRows &rows) {
  for (int row = 1; row <= rows.Count(); ++row) {
    const double sum = NumericPrefix(rows(row).SubItems(column_magnitude));
    const double reports = NumericPrefix(rows(row).SubItems(column_reports));
    // Without a report there is no mean: what a division by zero gives is no number, and has no text.
    rows.SetSubItem(row, column_magnitude, NumberText(sum / reports));
  }
}

}  // namespace

void ShowReports(ReportFields &fields) {
  try {
    const std::string answer =
        ComPart->Inet1.OpenURL(ServiceAddress("cmd=geta&map=" + frmRecords->Label2(0).Caption()), Inet::as_text);

    if (answer.empty()) {
      platform().message_box.Show("No reports found", program_title, MessageButtons::Ok, MessageIcon::None);
      return;
    }

    // Meant (reports-pile-up-in-the-list): each call should begin with an empty list. The rows stay as long as the
    // window: reports are added to means that are there already, and those of another event join them.
    // A window that was closed meanwhile is loaded again, hidden.
    ListRows &rows = ComPart->ListView1.ListItems;
    RowsByZip rows_by_zip(rows);

    if (AddReports(answer, ComPart->Label2(1).Caption(), fields, rows_by_zip))
      TakeMeans(rows);
  } catch (const RuntimeError &) {
    // The rows so far stay as they are.
  }
}

}  // namespace borvane
