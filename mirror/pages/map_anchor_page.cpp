#include "pages/map_anchor_page.h"

#include "pages/coordinates.h"
#include "pages/figures.h"

namespace borvane::mirror {

namespace {

constexpr const char *base = "<base href=\"/\">";

// A row's marker is "MAP" with the "<" after it, so that nothing else on the page may read "MAP<"; the blank after the
// place keeps one that ends in "MAP" from it. The magnitude is 29 characters after the marker's start, the link's path
// nine after its "<", and one blank is between the figures.
void AddAnchorRow(QByteArray &list, const Event &event) {
  list += "<TR><TD><A HREF=\"" + MapPath(event).sliced(1) + "\">MAP</A></TD><TD ALIGN=right> ";
  list += MagnitudeText(*event.magnitude) + " <A HREF=\"" + EventPath(event).sliced(1) + "\">";
  list += RowFigures(event) + "</A> " + RowPlace(event) + " </TD></TR>\n";
}

}  // namespace

QByteArray MapAnchorPage(const ListFrame &frame, const ListedEvents &events) {
  if (events.empty())
    return ListPage(frame, no_events, {}, base);
  QByteArray list =
      "<table>\n<tr><th>Map</th> <th>Magnitude, date, time, latitude, longitude, depth, place</th></tr>\n";
  for (const Event *event : events)
    AddAnchorRow(list, *event);
  return ListPage(frame, list + "</table>\n", {}, base);
}

}  // namespace borvane::mirror
