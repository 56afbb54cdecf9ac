#include "service/product_page.h"

#include "http/html_page.h"

namespace borvane::mirror {

namespace {

constexpr const char *description =
    R"(<h1>Borvane</h1>
<p>Borvane watches recent earthquakes for you. Choose one of 19 areas from Puerto Rico to Alaska, the whole world among
them, or a page by two coordinates: its events appear in a list on your desktop, the newest one above it and its
magnitude in the window's title.</p>
)";

/// How many use Borvane, in words.
QByteArray OnlineText(const QByteArray &online) {
  if (online.isEmpty())
    return "The number of users online is not known at the moment.";
  return online == "1" ? QByteArray("1 user is online.") : online + " users are online.";
}

}  // namespace

QByteArray ProductPage(const QString &newest_version, const QByteArray &online) {
  return HtmlPage("Borvane", description + ("<p>The newest version is <strong>" + newest_version.toLatin1()) +
                                 "</strong>. " + OnlineText(online) +
                                 "</p>\n<p><a href=\"/\">All list pages</a></p>\n");
}

}  // namespace borvane::mirror
