#pragma once

#include <string>
#include <string_view>

#include "reports/ComPart.h"
#include "reports/show_reports.h"
#include "support/program/list_rig.h"

namespace borvane {

/// A program that watches Los Angeles, whose list has one event strong enough for felt reports.
struct ReportRig : ListRig {
  static constexpr const char *key = "5.2-2018:02:07-01:26:13-34.495N-118.667W";

  ReportRig() {
    list({row("5.2", "Castaic")});
    clear_trace();
  }

  static ReportForm &form() { return *ComPart; }
  static CommandButton &submit_button() { return form().Command1(ReportForm::button_submit); }
  static TextBox &name() { return form().Text1(ReportForm::text_name); }
  static TextBox &age() { return form().Text1(ReportForm::text_age); }
  static TextBox &zip() { return form().Text1(ReportForm::text_zip); }
  static TextBox &school() { return form().Text1(ReportForm::text_school); }
  static TextBox &comments() { return form().Text1(ReportForm::text_comments); }

  ReportState &state() { return program().report; }

  void open() {
    click(frmRecords->mnuReportIt);
    clear_trace();
  }

  /// A text box is filled in and left.
  void answer(TextBox &box, std::string_view text) {
    enter(box);
    type(box, text);
    leave(box);
  }

  void choose_all(std::string_view what = "Duck", std::string_view strength = "weak",
                  std::string_view floor = "Ground level") {
    choose(form().Combo1, what);
    choose(form().Combo2, strength);
    choose(form().Combo3, floor);
  }

  /// Opens the form and fills in what makes a felt magnitude of 1.571429.
  void fill_in() {
    open();
    answer(name(), "ann lee");
    answer(age(), "42");
    answer(zip(), "90210");
    choose_all();
    tick(form().Timer1);
    clear_trace();
  }

  void submit() { click(submit_button()); }
  void cancel() { click(form().Command1(ReportForm::button_cancel)); }

  // What the filled form sends.

  static std::string summary() { return VersionDigits() + "|" + key + "|42|1.571429|0|0|90210"; }
  static std::string details() { return VersionDigits() + "||42|90210|||0|0|0|0|0|0|0|0|1|0|0"; }

  static std::string puta(std::string_view record = summary()) {
    return service + "cmd=puta&map=Los Angeles&strout=" + std::string(record);
  }
  static std::string putb(std::string_view record = details()) {
    return service + "cmd=putb&map=Los Angeles&strout=" + std::string(record);
  }
  static std::string putc(std::string_view record = details()) {
    return service + "cmd=putc&zip=90210&map=Los Angeles&strout=" + std::string(record);
  }
  static inline const std::string geta = service + "cmd=geta&map=Los Angeles";

  /// The service takes the filled form.
  void take_report() {
    serve(puta(), "ok");
    serve(putb(), "ok");
    serve(putc(), "ok");
  }

  /// The rows of the list of reports, like "90210 3 2".
  static Lines report_rows() {
    Lines rows;
    const ListRows &items = form().ListView1.ListItems;
    for (int row = 1; row <= items.Count(); ++row)
      rows.push_back(items(row).Text + " " + std::string(items(row).SubItems(1)) + " " +
                     std::string(items(row).SubItems(2)));
    return rows;
  }
};

}  // namespace borvane
