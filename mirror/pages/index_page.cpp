#include "pages/index_page.h"

#include "http/html_page.h"
#include "pages/areas.h"
#include "pages/browser_pages.h"
#include "pages/figures.h"
#include "pages/text.h"

namespace borvane::mirror {

QByteArray IndexPage(const Catalogue &catalogue, const QString &source, quint16 port) {
  const std::size_t count = catalogue.events().size();
  QByteArray body =
      "<h1>Recent earthquakes</h1>\n<p>" + QByteArray::number(count) + (count == 1 ? " event" : " events");
  body += " from " + HtmlText(source) + '.';
  if (!catalogue.events().empty())
    body += " The newest one was at " + LocalTimeText(catalogue.events().front().origin_time) + ", local time.";
  body += "</p>\n<ul>\n";
  for (const Area &area : Areas())
    body += "<li><a href=\"" + PageAddress(area, port) + "\">" + HtmlText(area.name) + "</a></li>\n";
  body += BrowserPageLinks(port);
  body += "</ul>\n<footer>Served by borvane-mirror. Events: U.S. Geological Survey, public domain.</footer>\n";
  return HtmlPage("Recent earthquakes", body);
}

}  // namespace borvane::mirror
