#include "pages/area_page.h"

#include "pages/map_anchor_page.h"
#include "pages/map_list_page.h"
#include "pages/quakes_page.h"
#include "pages/region_page.h"
#include "pages/world_page.h"

namespace borvane::mirror {

QByteArray AreaPage(const Area &area, const Catalogue &catalogue, const QByteArray &host, const PageFacts &facts) {
  const ListedEvents events = ListEvents(catalogue, [&](const Event &event) { return area.Holds(event); });
  const ListFrame frame = FrameOf(area.name, events, facts);
  switch (area.form) {
    case ListForm::Quakes:
      break;
    case ListForm::MapList:
      return MapListPage(frame, events);
    case ListForm::MapAnchor:
      return MapAnchorPage(frame, events);
    case ListForm::World:
      return WorldPage(frame, events);
    case ListForm::Region:
      return RegionPage(frame, events, host);
  }
  return QuakesPage(frame, events);
}

}  // namespace borvane::mirror
