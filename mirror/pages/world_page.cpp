#include "pages/world_page.h"

#include "pages/coordinates.h"
#include "pages/figures.h"

namespace borvane::mirror {

namespace {

/// The text as it is in a row that shows the magnitude. The scanner skips 22 characters after "strong>" for the tag
/// that colours it.
QByteArray Emphasized(const QByteArray &text, double magnitude) {
  if (magnitude >= coloured_world_magnitude)
    return "<strong><span class=\"intense\">" + text + "</span></strong>";
  if (magnitude >= bold_world_magnitude)
    return "<strong>" + text + "</strong>";
  return text;
}

/// A cell of a number, which the scanner takes from a tag inside the cell.
QByteArray NumberCell(const QByteArray &number) { return "<td nowrap><tt> " + number + " </tt></td>\n"; }

/// Never empty, since the scanner would go on to the next row's place.
QByteArray PlaceText(const Event &event) {
  const QByteArray place = RowPlace(event).trimmed();
  return place.isEmpty() ? "not named" : place;
}

// The scanner goes from one "nowrap>" to the next, starting at a "MAP", and takes the place from the first cell that is
// "<td>" alone.
void AddWorldRow(QByteArray &list, const Event &event) {
  const double magnitude = ShownMagnitude(*event.magnitude);
  list += R"(<tr><td class="map"><a href=")" + MapPath(event) + "\">MAP</a></td>\n";
  list += "<td nowrap>" + Emphasized(MagnitudeText(*event.magnitude), magnitude) + "</td>\n";
  list += "<td nowrap><a href=\"" + EventPath(event) + "\">" + RowTime(event) + "</a></td>\n";
  list += NumberCell(LatitudeText(event.latitude)) + NumberCell(LongitudeText(event.longitude)) +
          NumberCell(DepthText(event.depth));
  list += "<td>" + Emphasized(PlaceText(event), magnitude) + "</td></tr>\n";
}

// The scan fails where no "MAP" is left, also after the last row and without any.
constexpr const char *world_legend =
    "MAP leads to the events around it. Bold: magnitude 4.5 and above, in colour from magnitude 6.0. ";

}  // namespace

QByteArray WorldPage(const ListFrame &frame, const ListedEvents &events) {
  if (events.empty())
    return ListPage(frame, no_events, world_legend);
  QByteArray list =
      "<table>\n<tr><th>Map</th> <th>Magnitude</th> <th>Time</th> <th>Latitude</th> <th>Longitude</th> <th>Depth</th> "
      "<th>Place</th></tr>\n";
  constexpr qsizetype length_of_row = 512;
  list.reserve(length_of_row * static_cast<qsizetype>(events.size()));
  for (const Event *event : events)
    AddWorldRow(list, *event);
  list += "</table>\n";
  return ListPage(frame, list, world_legend);
}

}  // namespace borvane::mirror
