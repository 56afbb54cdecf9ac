#pragma once

#include <QByteArray>
#include <QString>

namespace borvane::mirror {

/// `text` in Windows-1252. A letter that the code page lacks loses its accent; what cannot be shown at all is
/// "?". Control characters become blanks.
QByteArray PageText(const QString &text);

/// PageText for HTML read by a browser: the characters that mean something there are escaped.
QByteArray HtmlText(const QString &text);

/// PageText for a row of a list page. The monitor takes it as it is and knows no escapes, so "<" and ">" become the
/// angle quotation marks that look like them, "&" is escaped only where a browser would take it for the start of a
/// reference, the address of an event page is broken up, since it marks a row, and what is longer than any place is
/// cut.
QByteArray RowText(const QString &text);

/// A place as the rows show it: "6km ENE of Yucaipa, CA" and "6 km ENE of Yucaipa, CA" become
/// "6 km ( 4 mi) ENE of Yucaipa, CA"; a place without a distance stays as it is.
QString PlaceWithMiles(const QString &place);

}  // namespace borvane::mirror
