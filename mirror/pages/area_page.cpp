#include "pages/area_page.h"

#include "pages/map_anchor_page.h"
#include "pages/map_list_page.h"
#include "pages/quakes_page.h"
#include "pages/region_page.h"
#include "pages/world_page.h"

namespace borvane::mirror {

QByteArray AreaPage(const Area &area, const Catalogue &catalogue, const QByteArray &host) {
  const ListedEvents events = ListEvents(catalogue, [&](const Event &event) { return area.Holds(event); });
  switch (area.form) {
    case ListForm::Quakes:
      break;
    case ListForm::MapList:
      return MapListPage(area.name, events);
    case ListForm::MapAnchor:
      return MapAnchorPage(area.name, events);
    case ListForm::World:
      return WorldPage(area.name, events);
    case ListForm::Region:
      return RegionPage(area.name, events, host);
  }
  return QuakesPage(area.name, events);
}

}  // namespace borvane::mirror
