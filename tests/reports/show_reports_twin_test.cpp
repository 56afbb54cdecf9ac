#include <random>

#include <gtest/gtest.h>

#include "support/program/plain_reports.h"
#include "support/program/report_rig.h"

namespace borvane {
namespace {

/// Random answers of the service, for random rows.
class RandomReports {
 public:
  explicit RandomReports(unsigned seed) : random_(seed) {}

  char Separator() { return Number(0, 2) == 0 ? ',' : '.'; }

  void AddRows(ListRows &rows) {
    for (int row = Number(0, 3); row > 0; --row)
      rows.Add({.Text = Zip(), .SubItemTexts = {Magnitude(), Pick({"0", "1", "2", "x", ""})}});
  }

  std::string Answer() {
    std::string answer;
    for (int line = Number(1, 6); line > 0; --line)
      answer += Line() + "\n";
    if (Number(0, 4) == 0)
      answer += Line();
    return answer;
  }

 private:
  int Number(int least, int most) { return std::uniform_int_distribution(least, most)(random_); }

  std::string Pick(std::initializer_list<const char *> choices) {
    return choices.begin()[Number(0, static_cast<int>(choices.size()) - 1)];
  }

  std::string Zip() { return Pick({"", "1", "2", "3"}); }

  std::string Magnitude() { return Pick({"2.5", "3.5", "2,5", ".1", "-7", "", "x", "1e308", "1e999", "0.1", "3"}); }

  std::string Line() {
    switch (Number(0, 11)) {
      case 0:
        return Zip();
      case 1:
        return "235|key|" + Zip();
      case 2:
        return "235|key|42|" + Magnitude() + "|0|0|" + Zip() +
               Pick({"|", "|x", "|a|b|c|4", "|a|b|c|d|5", "|a|b|c|d|e|6"});
      case 3:
        return "235|other|42|" + Magnitude() + "|0|0|" + Zip();
      case 4:
        return std::string(static_cast<std::size_t>(Number(0, 9) == 0 ? Number(32765, 32769) : 3), '|');
      default:
        return "235|key|42|" + Magnitude() + "|0|0|" + Zip();
    }
  }

  std::mt19937 random_;
};

Lines RowsOf(const ListRows &rows) {
  Lines texts;
  for (int row = 1; row <= rows.Count(); ++row)
    texts.push_back(rows(row).Text + "|" + std::string(rows(row).SubItems(1)) + "|" +
                    std::string(rows(row).SubItems(2)));
  return texts;
}

TEST(ShowReports, EndsAsIfItLookedThroughAllRowsForEachLine) {
  constexpr unsigned scenarios = 3'000;
  for (unsigned seed = 1; seed <= scenarios; ++seed) {
    RandomReports reports(seed);
    const char separator = reports.Separator();
    const unsigned rows_seed = seed + scenarios;

    ReportRig rig;
    rig.region().SetDecimalSeparator(separator);
    ReportForm &form = ReportRig::form();
    form.Label2(1).Caption = "key";
    RandomReports(rows_seed).AddRows(form.ListView1.ListItems);

    ListRows plain_rows;
    RandomReports(rows_seed).AddRows(plain_rows);

    // Twice: the second call meets means in the rows and fields that the first one has left.
    ReportFields fields;
    ReportFields plain_fields;
    for (int call = 1; call <= 2; ++call) {
      const std::string answer = reports.Answer();
      rig.serve(ReportRig::geta, answer);
      rig.happen([&] { ShowReports(fields); });
      plain::AddReports(answer, "key", plain_fields, plain_rows, separator);
      ASSERT_EQ(RowsOf(form.ListView1.ListItems), RowsOf(plain_rows)) << "seed " << seed << ", call " << call;
      ASSERT_EQ(fields, plain_fields) << "seed " << seed << ", call " << call;
    }
  }
}

}  // namespace
}  // namespace borvane
