#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <vector>

#include "catalogue/catalogue.h"

namespace borvane::mirror {

// What the forms of list pages have in common. Each form is read by a scanner of the monitor's own, by fixed texts and
// offsets; what a page writes is therefore exact to the character.

/// Chooses the events of a page.
using EventTest = std::function<bool(const Event &)>;

/// The events of a list page, the newest first. They belong to a catalogue that outlives the list.
using ListedEvents = std::vector<const Event *>;

/// The events that a list page shows of those that belong to it: all that have a magnitude, since no form has a row
/// without one.
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

/// A list page in the frame of all pages: its heading, the list, and a foot with the legend of the list's form.
/// `list` and `legend` are HTML, as is what `head` adds to the page's head.
QByteArray ListPage(const QString &title, const QByteArray &list, const QByteArray &legend = {},
                    const QByteArray &head = {});

/// What a list page says in place of its list when it has no events.
inline constexpr const char *no_events = "<p>There are no events here at the moment.</p>\n";

}  // namespace borvane::mirror
