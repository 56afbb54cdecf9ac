#pragma once

#include <QByteArray>
#include <QString>

namespace borvane::mirror {

/// A page for a person to read: `body` under the common head and style. The body is HTML; the title is plain text.
QByteArray HtmlPage(const QString &title, const QByteArray &body);

}  // namespace borvane::mirror
