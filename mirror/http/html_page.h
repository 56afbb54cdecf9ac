#pragma once

#include <QByteArray>

namespace borvane::mirror {

/// A page for a person to read, light or dark as the browser prefers, on a screen of any width. Title, body and what is
/// added to the head are HTML in Windows-1252. The page has no line feeds besides those of these.
QByteArray HtmlPage(const QByteArray &title, const QByteArray &body, const QByteArray &head = {});

}  // namespace borvane::mirror
