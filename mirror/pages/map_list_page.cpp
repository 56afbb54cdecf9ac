#include "pages/map_list_page.h"

#include <algorithm>

#include "pages/coordinates.h"
#include "pages/figures.h"

namespace borvane::mirror {

namespace {

/// How a row begins: ">map</A> 2.9" or ">MAP</A><B> 3.0".
enum class RowStart { Small, Capital };

/// The scanner looks for the next start of each kind before it reads a row, at most 32,767 characters ahead. A kind
/// that has been away for longer than this is due, which leaves room for two rows and the head of the page.
constexpr qsizetype longest_stretch = 25'000;

/// How many characters the magnitude, the figures and the blanks in front of a place have, so that places are in a
/// column.
constexpr qsizetype width_to_place = 49;

bool IsBold(const Event &event) { return ShownMagnitude(*event.magnitude) >= bold_map_magnitude; }

/// Chooses how each row begins: strong events in capitals, weak ones not, but for rows whose other kind is due.
class RowStarts {
 public:
  /// `length` is how long the list is in front of the row. The last row is always a small one: the scanner ends where
  /// no small start is left.
  RowStart Next(bool is_strong, bool is_last, qsizetype length) {
    RowStart start = is_strong ? RowStart::Capital : RowStart::Small;
    if (is_last || length - last_small_ > longest_stretch)
      start = RowStart::Small;
    else if (length - last_capital_ > longest_stretch)
      start = RowStart::Capital;
    (start == RowStart::Small ? last_small_ : last_capital_) = length;
    return start;
  }

 private:
  qsizetype last_small_ = 0;
  qsizetype last_capital_ = 0;
};

// The magnitude goes up to the event's link, which has nine characters in front of its path; one blank is between the
// figures, none after the depth. The place begins at the second character after the link, and loses the one in front of
// the next "<". A row is bold by its magnitude alone, however it begins.
void AddMapRow(QByteArray &list, const Event &event, RowStart start) {
  const bool is_strong = IsBold(event);
  const QByteArray map = "<A HREF=\"" + MapPath(event) + "\">";
  const QByteArray magnitude = MagnitudeText(*event.magnitude);
  const QByteArray figures = RowFigures(event);
  const QByteArray gap(std::max<qsizetype>(1, width_to_place - magnitude.size() - figures.size()), ' ');
  const QByteArray rest =
      ' ' + magnitude + "  <A HREF=\"" + EventPath(event) + "\">" + figures + "</A>" + gap + RowPlace(event) + ' ';
  if (start == RowStart::Capital && is_strong)
    list += map + "MAP</A><B>" + rest + "</B>\n";
  else if (start == RowStart::Capital)
    list += "<span class=\"plain\">" + map + "MAP</A><B>" + rest + "</B></span>\n";
  else if (is_strong)
    list += "<b>" + map + "map</A>" + rest + "</b>\n";
  else
    list += "<span>" + map + "map</A>" + rest + "</span>\n";
}

// Without a capital start in the text the scanner would look for a row at the page's head.
constexpr const char *map_legend = "Each <A>MAP</A> leads to the events around it. Bold: magnitude 3.0 and above. ";

}  // namespace

QByteArray MapListPage(const ListFrame &frame, const ListedEvents &events) {
  if (events.empty())
    return ListPage(frame, no_events, map_legend);
  QByteArray list = "<pre>\n<b>MAP MAG  DATE       TIME     LAT     LON      DEPTH    PLACE</b>\n";
  RowStarts starts;
  for (const Event *event : events)
    AddMapRow(list, *event, starts.Next(IsBold(*event), event == events.back(), list.size()));
  return ListPage(frame, list + "</pre>\n", map_legend);
}

}  // namespace borvane::mirror
