#include "pages/browser_pages.h"

#include <algorithm>
#include <array>

#include "http/html_page.h"
#include "pages/quakes_page.h"
#include "pages/text.h"

namespace borvane::mirror {

namespace {

struct ListedPage {
  const char *name;
  const char *path;
  bool (*belongs)(const Event &event);
  const char *today;  ///< HTML that leads to the public page of today
};

bool IsStrong(const Event &event) { return event.magnitude && *event.magnitude >= strong_motion_magnitude; }

bool IsAny(const Event & /*event*/) { return true; }

constexpr std::array<ListedPage, 2> pages = {{
    {"World", "/recenteqsww/", IsAny,
     "<p>The U.S. Geological Survey's own list is <a href=\"https://earthquake.usgs.gov/earthquakes/map/\">Latest "
     "Earthquakes</a>. These are the events of this mirror:</p>\n"},
    {"Strong Motion", "/research/strongmotion/effects/shake/archive/", IsStrong,
     "<p>Records of strong motion are at the <a href=\"https://www.strongmotioncenter.org/\">Center for Engineering "
     "Strong Motion Data</a>, maps of the shaking at <a "
     "href=\"https://earthquake.usgs.gov/data/shakemap/\">ShakeMap</a>. These are the strong events of this "
     "mirror:</p>\n"},
}};

constexpr const char *felt_title = "Did You Feel It?";

/// The forms in which the Survey collected felt reports, by the region of the event.
constexpr std::array<QByteArrayView, 2> felt_forms = {
    "/shake/ca/html/unknown_form.html",
    "/shake/ous/html/unknown_form.html",
};

/// The page in place of a form. No list of this mirror has anything to do with it.
QByteArray FeltFormPage() {
  return HtmlPage(
      felt_title,
      QByteArray("<h1>") + felt_title +
          "</h1>\n<p>The U.S. Geological Survey collects reports of felt earthquakes from all over the "
          "world:</p>\n<ul>\n"
          "<li><a href=\"https://earthquake.usgs.gov/earthquakes/eventpage/tellus\">Report an earthquake that you "
          "felt</a></li>\n"
          "<li><a href=\"https://earthquake.usgs.gov/data/dyfi/\">What others reported</a></li>\n"
          "<li><a href=\"/\">All pages of this mirror</a></li>\n</ul>\n");
}

}  // namespace

std::optional<QByteArray> BrowserPage(const QByteArray &path, const Catalogue &catalogue, const PageFacts &facts) {
  if (std::find(felt_forms.begin(), felt_forms.end(), path) != felt_forms.end())
    return FeltFormPage();
  const auto *page =
      std::find_if(pages.begin(), pages.end(), [&](const ListedPage &listed) { return path == listed.path; });
  if (page == pages.end())
    return std::nullopt;
  const ListedEvents events = ListEvents(catalogue, page->belongs);
  return QuakesPage(FrameOf(page->name, events, facts), events, page->today);
}

QByteArray BrowserPageLinks() {
  QByteArray links;
  for (const ListedPage &page : pages)
    links += QByteArray("<li><a href=\"") + page.path + "\">" + HtmlText(page.name) + "</a></li>\n";
  return links + "<li><a href=\"" + felt_forms.back().toByteArray() + "\">" + felt_title + "</a></li>\n";
}

}  // namespace borvane::mirror
