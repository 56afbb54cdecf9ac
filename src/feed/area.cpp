#include "feed/area.h"

#include "basic/number.h"
#include "core/program.h"
#include "settings/conffrm.h"
#include "settings/values.h"

namespace borvane {

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

  for (int position = 0; position < conffrm->Combo2.ListCount(); ++position) {
    if (conffrm->Combo2.List(position) != area)
      continue;

    // Meant (unknown-area-keeps-address): a heading or a text of no entry keeps the last address, after a fetch a mere
    // site root.
    if (const auto &page = areas[static_cast<std::size_t>(position)].page)
      Module1->SiteRoot = AddressOf(page->endpoint, page->path);
    return;
  }
}

void SaveArea() { SaveSetting(Setting::Area, conffrm->Combo2.Text()); }

}  // namespace borvane
