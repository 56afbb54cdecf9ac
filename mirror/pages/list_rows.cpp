#include "pages/list_rows.h"

#include "http/html_page.h"
#include "pages/figures.h"
#include "pages/text.h"

namespace borvane::mirror {

namespace {

/// Rows are longer than the lines of a text.
constexpr const char *wide = "<style>body { max-width: 62rem; }</style>";

}  // namespace

ListedEvents ListEvents(const Catalogue &catalogue, const EventTest &belongs) {
  ListedEvents events;
  for (const Event &event : catalogue.events())
    if (event.magnitude && belongs(event))
      events.push_back(&event);
  return events;
}

QByteArray EventPath(const Event &event) { return "/recenteqs/Quakes/" + event.id.toLatin1() + ".html"; }

QByteArray RowTime(const Event &event) { return LocalTimeText(event.origin_time); }

QByteArray RowFigures(const Event &event) {
  return RowTime(event) + ' ' + LatitudeText(event.latitude) + ' ' + LongitudeText(event.longitude) + ' ' +
         DepthText(event.depth);
}

QByteArray RowPlace(const Event &event) { return RowText(PlaceWithMiles(event.place)); }

QByteArray ListPage(const QString &title, const QByteArray &list, const QByteArray &legend, const QByteArray &head) {
  const QByteArray heading = "Recent Earthquakes: " + HtmlText(title);
  return HtmlPage(heading,
                  "<h1>" + heading + "</h1>\n" + list + "<footer>" + legend +
                      "Times are local to this computer, depths in kilometres. Source: U.S. Geological "
                      "Survey.</footer>\n",
                  QByteArray(wide) + head);
}

}  // namespace borvane::mirror
