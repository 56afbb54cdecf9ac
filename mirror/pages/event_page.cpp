#include "pages/event_page.h"

#include <algorithm>

#include "http/html_page.h"
#include "pages/coordinates.h"
#include "pages/figures.h"
#include "pages/list_rows.h"
#include "pages/locator_map.h"
#include "pages/text.h"

namespace borvane::mirror {

namespace {

constexpr double miles_a_kilometre = 0.621371;

// The monitor takes latitude, longitude and depth from the tenth character after the first "Latitude:", "Longitude:"
// and "Depth:" of the page up to the next "<".
QByteArray Row(const char *name, const QByteArray &value) {
  return QByteArray("<dt>") + name + ":</dt> <dd>" + value + "</dd>\n";
}

/// HtmlText in which nothing is a label that the monitor looks for.
QByteArray ValueText(const QString &text) { return HtmlText(text).replace(':', "&#58;"); }

/// "Earthquake", "Quarry blast": the kind of the event as a word at the start of a sentence.
QString KindOf(const Event &event) {
  const QString kind = event.kind.isEmpty() ? "earthquake" : event.kind;
  return kind.left(1).toUpper() + kind.mid(1);
}

/// The place for running text: without the blank that keeps the miles of list rows in a column.
QString PlaceOf(const Event &event) { return PlaceWithMiles(event.place).replace("( ", "("); }

/// "Magnitude 2.0", "Quarry blast of magnitude 2.0", "Earthquake".
QString WhatOf(const Event &event) {
  if (!event.magnitude)
    return KindOf(event);
  const QString magnitude = QString::fromLatin1(MagnitudeText(*event.magnitude));
  if (event.kind.isEmpty() || event.kind == "earthquake")
    return "Magnitude " + magnitude;
  return KindOf(event) + " of magnitude " + magnitude;
}

/// Whom to thank for the event.
QString CreditOf(const Event &event) {
  return event.credit.isEmpty() ? "U.S. Geological Survey, public domain" : event.credit;
}

/// Whether the Survey has a page about the event.
bool IsOfTheSurvey(const Event &event, const PageFacts &facts) {
  return event.credit.isEmpty() || std::any_of(facts.sources.begin(), facts.sources.end(), [&](const Credit &source) {
           return source.is_survey && source.text == event.credit;
         });
}

QString TitleOf(const Event &event) {
  const QString what = WhatOf(event);
  return event.place.isEmpty() ? what : what + ", " + PlaceOf(event);
}

QByteArray DepthSentence(const Event &event) {
  if (!event.depth)
    return "not known";
  return DepthText(event.depth) + " km (" + DepthText(*event.depth * miles_a_kilometre) + " mi)";
}

QByteArray Figures(const Event &event) {
  QByteArray list = "<dl>\n";
  list += Row("Place", event.place.isEmpty() ? "not named" : ValueText(PlaceOf(event)));
  list += Row("Magnitude", event.magnitude ? MagnitudeText(*event.magnitude) : "not known");
  list += Row("Local time", LocalTimeText(event.origin_time) + " (" + ZoneText(event.origin_time) + ')');
  list += Row("UTC", UtcTimeText(event.origin_time));
  list += Row("Latitude", SignedDegreesText(event.latitude));
  list += Row("Longitude", SignedDegreesText(event.longitude));
  list += Row("Depth", DepthSentence(event));
  list += Row("Kind", ValueText(KindOf(event)));
  if (!event.network.isEmpty())
    list += Row("Network", ValueText(event.network));
  if (event.updated != 0)
    list += Row("Revised", LocalTimeText(event.updated) + " (" + ZoneText(event.updated) + ')');
  list += Row("Credit", ValueText(CreditOf(event)));
  list += Row("Id", HtmlText(event.id));
  return list + "</dl>\n";
}

QByteArray Links(const Event &event, const PageHost &host, const PageFacts &facts) {
  QByteArray list = "<ul>\n";
  for (const Area &area : facts.areas) {
    const QByteArray link = event.is_listed && area.Holds(event) ? host.LinkTo(area, facts.areas) : QByteArray();
    if (!link.isEmpty())
      list += "<li><a href=\"" + link + "\">Recent earthquakes: " + HtmlText(area.name) + "</a></li>\n";
  }
  list += "<li><a href=\"" + MapPath(event) + "\">Recent earthquakes around this one</a></li>\n";
  if (IsOfTheSurvey(event, facts))
    list += "<li><a href=\"https://earthquake.usgs.gov/earthquakes/eventpage/" + HtmlText(event.id) +
            "\">The U.S. Geological Survey's page about this event</a></li>\n";
  return list + "<li><a href=\"/\">All pages</a></li>\n</ul>\n";
}

}  // namespace

QByteArray EventPage(const Event &event, const Catalogue &catalogue, const PageHost &host, const PageFacts &facts) {
  const QByteArray title = ValueText(TitleOf(event));
  const QByteArray data = DataNote(facts);
  QByteArray body = "<h1>" + title + "</h1>\n";
  if (!data.isEmpty())
    body += "<p>" + data + "</p>\n";
  body += Figures(event) + LocatorMap(event, catalogue) + Links(event, host, facts);
  body += "<footer>Served by borvane-mirror. Event: " + ValueText(CreditOf(event)) + ".</footer>\n";
  return HtmlPage(title, body);
}

}  // namespace borvane::mirror
