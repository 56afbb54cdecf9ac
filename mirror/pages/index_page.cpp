#include "pages/index_page.h"

#include "pages/areas.h"
#include "pages/figures.h"
#include "pages/text.h"

namespace borvane::mirror {

QByteArray IndexPage(const Catalogue &catalogue, const QString &source, quint16 port) {
  QByteArray page =
      "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"windows-1252\"><title>Recent "
      "earthquakes</title></head>\n"
      "<body><h1>Recent earthquakes</h1>\n";
  page += "<p>" + QByteArray::number(catalogue.events().size()) + " events from " + HtmlText(source) + '.';
  if (!catalogue.events().empty())
    page += " The newest one was at " + LocalTimeText(catalogue.events().front().origin_time) + ", local time.";
  page += "</p>\n<ul>\n";
  for (const Area &area : Areas())
    page += "<li><a href=\"http://" + QByteArray(HostLabel(area.host)) + ".localhost:" + QByteArray::number(port) +
            area.path + "\">" + HtmlText(area.name) + "</a></li>\n";
  page +=
      "</ul>\n<p>Served by borvane-mirror. Source of the events: U.S. Geological Survey, public "
      "domain.</p></body></html>\n";
  return page;
}

}  // namespace borvane::mirror
