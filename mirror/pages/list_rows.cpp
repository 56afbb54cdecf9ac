#include "pages/list_rows.h"

#include "http/html_page.h"
#include "pages/figures.h"
#include "pages/text.h"

namespace borvane::mirror {

namespace {

/// Rows are longer than the lines of a text.
constexpr const char *wide = "<style>body { max-width: 62rem; }</style>";

/// HTML in which nothing is the address of an event's page, which marks a row.
QByteArray CreditText(const QString &credit) {
  return HtmlText(credit).replace("recenteqs/Quakes", "recenteqs Quakes");
}

/// Says which zones the times of the events have.
QByteArray ZonesNote(const ListedEvents &events) {
  return "Times are local: " + ZonesText(events.back()->origin_time, events.front()->origin_time) + ".";
}

}  // namespace

ListedEvents ListEvents(const Catalogue &catalogue, const EventTest &belongs) {
  ListedEvents events;
  for (const Event &event : catalogue.events())
    if (event.is_listed && event.magnitude && belongs(event))
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

ListFrame FrameOf(const QString &title, const ListedEvents &events, const PageFacts &facts) {
  ListFrame frame = {.title = title};
  const QByteArray data = DataNote(facts);
  const QByteArray zones = events.empty() ? QByteArray() : ZonesNote(events);
  if (!data.isEmpty() || !zones.isEmpty())
    frame.note = "<p>" + data + (data.isEmpty() || zones.isEmpty() ? "" : " ") + zones + "</p>\n";
  QStringList credits;
  const QString *last = nullptr;
  for (const Event *event : events) {
    // Neighbours mostly have one source.
    if (last && *last == event->credit)
      continue;
    last = &event->credit;
    const QString credit = event->credit.isEmpty() ? frame.credit : event->credit;
    if (!credits.contains(credit))
      credits.append(credit);
  }
  if (!credits.isEmpty())
    frame.credit = credits.join("; ");
  return frame;
}

QByteArray DataNote(const PageFacts &facts) {
  if (facts.is_sample)
    return "These events are a bundled sample, not today's.";
  if (!facts.data_time)
    return {};
  return "Data as of " + LocalTimeText(*facts.data_time) + " (" + ZoneText(*facts.data_time) + ").";
}

QByteArray ListPage(const ListFrame &frame, const QByteArray &list, const QByteArray &legend, const QByteArray &head) {
  const QByteArray heading = "Recent Earthquakes: " + HtmlText(frame.title);
  return HtmlPage(heading,
                  "<h1>" + heading + "</h1>\n" + frame.note + list + "<footer>" + legend +
                      "Depths are in kilometres. Source: " + CreditText(frame.credit) + ".</footer>\n",
                  QByteArray(wide) + head);
}

}  // namespace borvane::mirror
