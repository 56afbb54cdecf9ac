#include "feed/area.h"

#include <algorithm>

#include "basic/number.h"
#include "core/program.h"
#include "settings/conffrm.h"
#include "settings/values.h"

namespace borvane {

namespace {

/// The page of the first entry with that text; nothing for a heading and for a text of no entry.
std::optional<AreaPage> PageOf(std::string_view text) {
  const auto *area = std::find_if(areas.begin(), areas.end(), [&](const Area &entry) { return entry.text == text; });
  return area == areas.end() ? std::nullopt : area->page;
}

}  // namespace

void GetAreaUrl() {
  // Meant (coordinates-read-in-every-mode): they matter for "Lat/Long" alone, but numbers outside 16 bits end every
  // call.
  const Integer first = RoundToInteger(NumericPrefix(conffrm->Text6(0).Text()));
  const Integer second = RoundToInteger(NumericPrefix(conffrm->Text6(1).Text()));

  const std::string area = conffrm->Combo2.Text();

  // Meant (coordinates-in-the-order-of-the-boxes): the pages' own names begin with the longitude, the boxes with the
  // latitude. Nothing is swapped: the user enters the numbers in the order of the page's name.
  if (area.empty() || conffrm->Check4.Value() == 1) {
    Module1->SiteRoot =
        AddressOf(Endpoint::Southern, "/recenteqs/Maps/" + IntegerText(first) + "-" + IntegerText(second) + ".html");
    return;
  }

  // Meant (unknown-area-keeps-address): a heading or a text of no entry keeps the last address, after a fetch a mere
  // site root.
  if (const std::optional<AreaPage> page = PageOf(area))
    Module1->SiteRoot = AddressOf(page->endpoint, page->path);
}

Scanner ScannerOf(std::string_view area) {
  const std::optional<AreaPage> page = PageOf(area);
  return page ? page->scan : ScanQuakesList;
}

void SaveArea() { SaveSetting(Setting::Area, conffrm->Combo2.Text()); }

}  // namespace borvane
