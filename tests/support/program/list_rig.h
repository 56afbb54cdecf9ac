#pragma once

#include "support/program/bar_rig.h"
#include "support/program/list_pages.h"

namespace borvane {

inline const std::string nome_page = "http://alaska.localhost:17650/recenteqs/Quakes/nome.html";
inline const std::string adak_page = "http://alaska.localhost:17650/recenteqs/Quakes/adak.html";

/// A program that watches Los Angeles, whose list the user clicks on.
struct ListRig : BarRig {
  static ListView &events() { return frmRecords->ListView1; }

  void click_title(int column) {
    happen([&] { events().ClickColumn(column); });
  }

  void click_list(int button = 1) { release_mouse_on(events(), button); }

  /// The area is Alaska, and the list has two of its rows, the second one with all figures.
  void list_alaska() {
    conffrm->Combo2.Text = "All Alaska";
    list({{"3.1", "noon", "near Nome", nome_page}, {"2.9", "night", "Adak", adak_page, "51.80", "-176.60", "12 km"}});
    serve(nome_page, EventPageText("64.50", "-165.40", " 33 km"));
    serve(adak_page, EventPageText("51.8", "-176.6", "12 km"));
    clear_trace();
  }

  /// The rows' own texts.
  static Lines magnitudes() {
    Lines texts;
    for (int row = 1; row <= events().ListItems.Count(); ++row)
      texts.push_back(events().ListItems(row).Text);
    return texts;
  }

  static std::string sub_item(int row, int number) { return std::string(events().ListItems(row).SubItems(number)); }

  static std::string panel(int number) { return frmRecords->StatusBar1.Panels(number).Text(); }

  /// What is opened, fetched and reported while `entry` is clicked.
  Lines click_entry(Control &entry) {
    clear_trace();
    click(entry);
    return trace({"request", "open", "open-file", "error"});
  }
};

}  // namespace borvane
