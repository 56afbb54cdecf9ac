#include "pages/quakes_page.h"

#include "http/html_page.h"
#include "pages/coordinates.h"
#include "pages/figures.h"
#include "pages/text.h"

namespace borvane::mirror {

namespace {

// The scanner reads by fixed offsets: the magnitude within the 15 characters in front of the event page's path, one
// blank between the figures, none after the depth, the closing tag's "<" right after it, and the place from four
// characters after that "<" to the line feed. What comes before a row's marker must be at least 15 characters long,
// which the map link sees to.
void AddRow(QByteArray &page, const Event &event) {
  page += "<A HREF=\"" + MapPath(event) + "\">map</A> ";
  page += MagnitudeText(*event.magnitude) + "  <A HREF=\"/recenteqs/Quakes/" + event.id.toLatin1() + ".html\">";
  page += LocalTimeText(event.origin_time) + ' ' + LatitudeText(event.latitude) + ' ' + LongitudeText(event.longitude);
  page += ' ' + DepthText(event.depth) + "</A>    " + RowText(PlaceWithMiles(event.place)) + '\n';
}

}  // namespace

QByteArray QuakesPage(const QString &title, const Catalogue &catalogue, const EventTest &belongs) {
  const QByteArray heading = "Recent Earthquakes: " + HtmlText(title);
  QByteArray body =
      "<h1>" + heading + "</h1>\n<pre>\n<b>MAP MAG  DATE       TIME     LAT     LON      DEPTH  PLACE</b>\n";
  for (const Event &event : catalogue.events())
    if (event.magnitude && belongs(event))
      AddRow(body, event);
  body +=
      "</pre>\n<footer>Times are local to this computer, depths in kilometres. Source: U.S. Geological "
      "Survey.</footer>\n";
  return HtmlPage(heading, body);
}

}  // namespace borvane::mirror
