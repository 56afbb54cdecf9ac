#include <cstdint>
#include <cstdlib>
#include <string>

#include "reports/ComPart.h"
#include "scan_target.h"
#include "support/one_answer.h"
#include "support/program/plain_reports.h"

// Any text as the service's answer: the quick reader of reports leaves the same rows and fields as the plain one. The
// event that it looks for is "e".

namespace borvane {

namespace {

/// A network, and a program on it whose list of reports is empty.
struct Reported {
  Reported() { ComPart->Label2(1).Caption = "e"; }

  IdleHost host;
  OneAnswer network;
  const Program program{ServicesOver(network, host), host};
};

bool AreEqual(const ListRows &rows, const ListRows &others) {
  if (rows.Count() != others.Count())
    return false;
  for (int row = 1; row <= rows.Count(); ++row) {
    if (rows(row).Text != others(row).Text || rows(row).SubItems(1) != others(row).SubItems(1) ||
        rows(row).SubItems(2) != others(row).SubItems(2))
      return false;
  }
  return true;
}

}  // namespace

}  // namespace borvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  using namespace borvane;
  constexpr std::size_t longest = 4096;
  if (size > longest)
    return 0;
  // One for all answers.
  static Reported reported;
  const std::string answer = PageOf(data, size);
  ListRows &rows = ComPart->ListView1.ListItems;
  ListRows plain_rows;
  ReportFields fields;
  ReportFields plain_fields;
  rows.Clear();
  // The second time, the rows have means and the fields what the first has left.
  for (int call = 0; call < 2; ++call) {
    reported.network.Set(answer);
    ShowReports(fields);
    if (!answer.empty())
      plain::AddReports(answer, "e", plain_fields, plain_rows, '.');
    if (!AreEqual(rows, plain_rows) || fields != plain_fields)
      std::abort();
  }
  return 0;
}
