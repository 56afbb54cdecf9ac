#pragma once

#include <QByteArray>

namespace borvane::mirror {

/// A page for a person to read, light or dark as the browser prefers. Title and body are HTML in Windows-1252. The page
/// has no line feeds besides those of the body.
QByteArray HtmlPage(const QByteArray &title, const QByteArray &body);

}  // namespace borvane::mirror
