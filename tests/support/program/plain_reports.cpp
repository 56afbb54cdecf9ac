#include "support/program/plain_reports.h"

#include "basic/failure.h"
#include "basic/number.h"

namespace borvane::plain {

namespace {

void TakeApart(std::string line, ReportFields &fields) {
  int k = 0;
  while (line.find('|') != std::string::npos) {
    if (k > 10)
      Fail(Failure::Subscript);
    fields[static_cast<std::size_t>(k)] = line.substr(0, line.find('|'));
    line = line.substr(line.find('|') + 1);
    ++k;
    if (line.empty())
      break;
  }
  fields[6] = line;
}

void AddLine(const ReportFields &fields, ListRows &rows, char separator) {
  bool found = false;
  for (int row = 1; row <= rows.Count(); ++row) {
    if (rows(row).Text != fields[6])
      continue;
    const double sum = NumericPrefix(rows(row).SubItems(1)) + NumericPrefix(fields[3]);
    rows.SetSubItem(row, 1, DoubleText(sum, separator));
    const double count = NumericPrefix(rows(row).SubItems(2)) + 1;
    rows.SetSubItem(row, 2, DoubleText(count, separator));
    found = true;
  }
  if (!found)
    rows.Add({.Text = fields[6], .SubItemTexts = {fields[3], "1"}});
}

void AddLines(const std::string &answer, const std::string &event, ReportFields &fields, ListRows &rows,
              char separator) {
  constexpr std::size_t last_position = 32767;
  std::size_t start = 0;
  do {
    const std::size_t end = answer.find('\n', start);
    if (end == std::string::npos)
      return;
    if (end - start + 1 > last_position)
      Fail(Failure::Overflow);
    TakeApart(answer.substr(start, end - start), fields);
    start = end + 1;
    if (fields[1] == event)
      AddLine(fields, rows, separator);
  } while (start < answer.size());

  for (int row = 1; row <= rows.Count(); ++row) {
    const double mean = NumericPrefix(rows(row).SubItems(1)) / NumericPrefix(rows(row).SubItems(2));
    rows.SetSubItem(row, 1, DoubleText(mean, separator));
  }
}

}  // namespace

void AddReports(const std::string &answer, const std::string &event, ReportFields &fields, ListRows &rows,
                char separator) {
  try {
    AddLines(answer, event, fields, rows, separator);
  } catch (const RuntimeError &) {
    // Ends the reading, as it does in the program.
  }
}

}  // namespace borvane::plain
