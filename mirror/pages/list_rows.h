#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <vector>

#include "catalogue/catalogue.h"
#include "pages/page_facts.h"

namespace borvane::mirror {

// What the forms of list pages have in common. Each form is read by a scanner of the monitor's own, by fixed texts and
// offsets; what a page writes is therefore exact to the character.

/// Chooses the events of a page.
using EventTest = std::function<bool(const Event &)>;

/// The events of a list page, the newest first. They belong to a catalogue that outlives the list.
using ListedEvents = std::vector<const Event *>;

/// The events that a list page shows of those that belong to it: all that may be listed and have a magnitude, since no
/// form has a row without one.
ListedEvents ListEvents(const Catalogue &catalogue, const EventTest &belongs);

/// The path of an event's page, on every host: "/recenteqs/Quakes/ci37868143.html".
QByteArray EventPath(const Event &event);

/// "2018/02/07 01:26:13", the event's local time.
QByteArray RowTime(const Event &event);

/// "2018/02/07 01:26:13 34.495N 118.667W 26.5": time, latitude, longitude and depth, with one blank between them. A
/// depth that is not known is empty.
QByteArray RowFigures(const Event &event);

/// The event's place with miles, as text that no scanner takes for anything else.
QByteArray RowPlace(const Event &event);

/// What a list page says around its list.
struct ListFrame {
  QString title;
  QByteArray note = {};  ///< HTML under the heading
  QString credit = "U.S. Geological Survey";
};

/// The frame of a page with those events: a note of the time of the data and of the zone of the times, and the credits
/// of all events.
ListFrame FrameOf(const QString &title, const ListedEvents &events, const PageFacts &facts);

/// What a page says of the time of its data; empty when there is nothing to say.
QByteArray DataNote(const PageFacts &facts);

/// A list page in the frame of all pages: its heading and note, the list, and a foot with the legend of the list's form
/// and the credit. `list` and `legend` are HTML, as is what `head` adds to the page's head.
QByteArray ListPage(const ListFrame &frame, const QByteArray &list, const QByteArray &legend = {},
                    const QByteArray &head = {});

/// What a list page says in place of its list when it has no events.
inline constexpr const char *no_events = "<p>There are no events here at the moment.</p>\n";

}  // namespace borvane::mirror
