#include "pages/index_page.h"

#include "http/html_page.h"
#include "pages/browser_pages.h"
#include "pages/figures.h"
#include "pages/list_rows.h"
#include "pages/text.h"

namespace borvane::mirror {

namespace {

QByteArray SourcesList(const PageFacts &facts) {
  if (facts.sources.empty())
    return {};
  QByteArray list = "<h2>Sources</h2>\n<ul>\n";
  for (const Credit &source : facts.sources)
    list += "<li>" + HtmlText(source.name) + ": " + HtmlText(source.text) + "</li>\n";
  return list + "</ul>\n";
}

QByteArray AreaItem(const Area &area, const QByteArray &link) {
  const QByteArray name = HtmlText(area.name);
  return "<li>" + (link.isEmpty() ? name : QByteArray("<a href=\"" + link + "\">" + name + "</a>")) + "</li>\n";
}

}  // namespace

QByteArray IndexPage(const Catalogue &catalogue, const PageFacts &facts, const PageHost &host) {
  const std::size_t count = catalogue.events().size();
  QByteArray body =
      "<h1>Recent earthquakes</h1>\n<p>" + QByteArray::number(count) + (count == 1 ? " event" : " events");
  body += " from " + HtmlText(facts.origin) + '.';
  if (!catalogue.events().empty()) {
    const qint64 newest = catalogue.events().front().origin_time;
    body += " The newest one was at " + LocalTimeText(newest) + ", local time (" + ZoneText(newest) + ").";
  }
  const QByteArray data = DataNote(facts);
  body += (data.isEmpty() ? "" : " ") + data + "</p>\n<ul>\n";
  for (const Area &area : facts.areas)
    body += AreaItem(area, host.LinkTo(area, facts.areas));
  body += BrowserPageLinks() + "</ul>\n" + SourcesList(facts) + "<footer>Served by borvane-mirror.";
  if (facts.sources.empty())
    body += " Events: U.S. Geological Survey, public domain.";
  return HtmlPage("Recent earthquakes", body + "</footer>\n");
}

}  // namespace borvane::mirror
