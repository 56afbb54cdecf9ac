#include "pages/region_page.h"

#include "pages/figures.h"

namespace borvane::mirror {

namespace {

/// The address of the event's page on the host. The scanner takes it up to the first "html", which is therefore at its
/// end only: a host's name is the same in capitals, and an id with an escape.
QByteArray AddressOfPage(const Event &event, QByteArray host) {
  QByteArray id = event.id.toLatin1();
  return "http://" + host.replace("html", "HTML") + "/recenteqs/Quakes/" + id.replace("html", "ht%6Dl") + ".html";
}

// The scanner ends its table where "</table>" is missing or near. No "</table>" in small letters may come after the
// row: how near it is would depend on the length of the place.
void AddNewest(QByteArray &list, const Event &event, const QByteArray &host) {
  const QByteArray link = "<td><a href=\"" + AddressOfPage(event, host) + "\">";
  list +=
      "<TABLE>\n<tr><td><center>Time and Date</center></td> <td><center>Magnitude</center></td> "
      "<td><center>Region</center></td></tr>\n<tr>";
  list += link + RowTime(event) + "</a></td> " + link + MagnitudeText(*event.magnitude) + "</a></td> " + link +
          RowPlace(event) + "</a></td></tr>\n</TABLE>\n";
}

void AddEarlier(QByteArray &list, const Event &event) {
  list += "<tr><td><a href=\"" + EventPath(event) + "\">" + RowTime(event) + "</a></td> <td>" +
          MagnitudeText(*event.magnitude) + "</td> <td>" + RowPlace(event) + "</td></tr>\n";
}

}  // namespace

QByteArray RegionPage(const ListFrame &frame, const ListedEvents &events, const QByteArray &host) {
  if (events.empty())
    return ListPage(frame, no_events);
  QByteArray list;
  AddNewest(list, *events.front(), host);
  if (events.size() > 1) {
    list += "<h2>Earlier events</h2>\n<TABLE>\n<tr><th>Time and Date</th> <th>Magnitude</th> <th>Region</th></tr>\n";
    for (std::size_t i = 1; i < events.size(); ++i)
      AddEarlier(list, *events[i]);
    list += "</TABLE>\n";
  }
  return ListPage(frame, list);
}

}  // namespace borvane::mirror
