#include "pages/quakes_page.h"

#include "pages/coordinates.h"
#include "pages/figures.h"

namespace borvane::mirror {

namespace {

// The scanner reads by fixed offsets: the magnitude within the 15 characters in front of the event page's path, one
// blank between the figures, none after the depth, the closing tag's "<" right after it, and the place from four
// characters after that "<" to the line feed. What comes before a row's marker must be at least 15 characters long,
// which the map link sees to.
void AddQuakesRow(QByteArray &list, const Event &event) {
  list += "<A HREF=\"" + MapPath(event) + "\">map</A> " + MagnitudeText(*event.magnitude);
  list += "  <A HREF=\"" + EventPath(event) + "\">" + RowFigures(event) + "</A>    " + RowPlace(event) + '\n';
}

}  // namespace

QByteArray QuakesPage(const ListFrame &frame, const ListedEvents &events, const QByteArray &introduction) {
  if (events.empty())
    return ListPage(frame, introduction + no_events);
  QByteArray list = introduction + "<pre>\n<b>MAP MAG  DATE       TIME     LAT     LON      DEPTH  PLACE</b>\n";
  for (const Event *event : events)
    AddQuakesRow(list, *event);
  return ListPage(frame, list + "</pre>\n");
}

}  // namespace borvane::mirror
