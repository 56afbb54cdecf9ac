#include "pages/browser_pages.h"

#include <algorithm>
#include <array>

#include "pages/quakes_page.h"
#include "pages/text.h"

namespace borvane::mirror {

namespace {

struct ListedPage {
  const char *name;
  BrowserEndpoint endpoint;
  const char *path;
  bool (*belongs)(const Event &event);
};

bool IsStrong(const Event &event) { return event.magnitude && *event.magnitude >= strong_motion_magnitude; }

bool IsAny(const Event & /*event*/) { return true; }

constexpr std::array<ListedPage, 2> pages = {{
    {"World", BrowserEndpoint::WorldList, "/recenteqsww/", IsAny},
    {"Strong Motion", BrowserEndpoint::StrongMotion, "/research/strongmotion/effects/shake/archive/", IsStrong},
}};

}  // namespace

std::optional<QByteArray> BrowserPage(const QByteArray &path, const Catalogue &catalogue) {
  const auto *page =
      std::find_if(pages.begin(), pages.end(), [&](const ListedPage &listed) { return path == listed.path; });
  if (page == pages.end())
    return std::nullopt;
  return QuakesPage(page->name, catalogue, page->belongs);
}

QByteArray BrowserPageLinks(quint16 port) {
  QByteArray links;
  for (const ListedPage &page : pages)
    links += "<li><a href=\"" + QByteArray::fromStdString(MirrorSite(page.endpoint, port)) + page.path + "\">" +
             HtmlText(page.name) + "</a></li>\n";
  return links;
}

}  // namespace borvane::mirror
