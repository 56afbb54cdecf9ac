#include "service/product_page.h"

#include "http/html_page.h"

namespace borvane::mirror {

namespace {

constexpr const char *description =
    R"(<h1>Borvane</h1>
<p>Borvane watches recent earthquakes for you. Choose one of 19 areas from Puerto Rico to Alaska, the whole world among
them, or a page by two coordinates: its events appear in a list on your desktop, the newest one above it and its
magnitude in the window's title. A bar at the edge of the screen can replace the window, and strong events can sound an
alarm.</p>
<p>Did you feel an earthquake? Report it from the list's menu, and see what others felt, by zip code.</p>
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

QByteArray ProductsPage() {
  return HtmlPage(
      "Products",
      "<h1>Products</h1>\n<ul>\n<li><a href=\"/borvane/\">Borvane</a>, a desktop monitor of recent "
      "earthquakes</li>\n<li>borvane-mirror, which serves <a href=\"/\">the list pages</a> that it reads and "
      "keeps the felt reports of its users</li>\n</ul>\n");
}

}  // namespace borvane::mirror
