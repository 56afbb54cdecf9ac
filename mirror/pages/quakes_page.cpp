#include "pages/quakes_page.h"

#include "pages/coordinates.h"
#include "pages/figures.h"
#include "pages/text.h"

namespace borvane::mirror {

namespace {

// The scanner reads by fixed offsets: the magnitude within the 15 characters in front of the event page's path, one
// blank between the figures, none behind the depth, the closing tag's "<" right behind it, and the place from four
// characters behind that "<" to the line feed. What comes before a row's marker must be at least 15 characters long,
// which the map link sees to.
void AddRow(QByteArray &page, const Event &event) {
  page += "<A HREF=\"" + MapPath(event) + "\">map</A> ";
  page += MagnitudeText(*event.magnitude) + "  <A HREF=\"/recenteqs/Quakes/" + event.id.toLatin1() + ".html\">";
  page += LocalTimeText(event.origin_time) + ' ' + LatitudeText(event.latitude) + ' ' + LongitudeText(event.longitude);
  page += ' ' + DepthText(event.depth) + "</A>    " + RowText(PlaceWithMiles(event.place)) + '\n';
}

}  // namespace

QByteArray QuakesPage(const QString &title, const Catalogue &catalogue, const EventTest &belongs) {
  const QByteArray name = HtmlText(title);
  QByteArray page =
      "<!DOCTYPE html>\n<HTML LANG=\"en\"><HEAD><META CHARSET=\"windows-1252\"><TITLE>Recent Earthquakes: ";
  page += name + "</TITLE></HEAD>\n<BODY><H1>Recent Earthquakes: " + name + "</H1>\n<PRE>\n";
  page += "<B>MAP MAG  DATE       TIME     LAT     LON      DEPTH  PLACE</B>\n";
  for (const Event &event : catalogue.events())
    if (event.magnitude && belongs(event))
      AddRow(page, event);
  page +=
      "</PRE>\n<P>Times are local to this computer, depths in kilometres. Source: U.S. Geological "
      "Survey.</P>\n</BODY></HTML>\n";
  return page;
}

}  // namespace borvane::mirror
