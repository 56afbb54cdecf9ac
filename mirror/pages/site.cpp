#include "pages/site.h"

#include <ctime>

#include "http/plain_host.h"
#include "pages/area_page.h"
#include "pages/browser_pages.h"
#include "pages/coordinates.h"
#include "pages/event_page.h"
#include "pages/index_page.h"
#include "pages/quakes_page.h"

namespace borvane::mirror {

namespace {

constexpr QByteArrayView event_folder = "/recenteqs/Quakes/";
constexpr QByteArrayView page_suffix = ".html";

/// When the kept pages grow beyond this, all are dropped: a client that asks for every possible page must not fill
/// the memory.
constexpr qsizetype most_kept_bytes = 32 * 1024 * 1024;

}  // namespace

void Site::SetCatalogue(std::shared_ptr<const Catalogue> catalogue, PageFacts facts) {
  catalogue_ = std::move(catalogue);
  facts_ = std::move(facts);
  kept_.clear();
  kept_bytes_ = 0;
}

bool Site::Serves(const QByteArray & /*target*/, const QByteArray & /*host*/) const { return true; }

void Site::Handle(const Request &request, const QHostAddress & /*client*/, const Reply &reply) {
  const std::optional<QByteArray> page = Page(request.target, request.host);
  reply(page ? Answer{.body = *page} : Refusal(404, request.target, request.host));
}

Answer Site::Refusal(int status, const QByteArray &target, const QByteArray & /*host*/) const {
  Answer answer = StatusPage(status);
  if (IsListPath(PathOf(target)))
    answer.body.clear();
  return answer;
}

std::optional<QByteArray> Site::Page(const QByteArray &target, const QByteArray &host) {
  const QByteArray path = PathOf(target);
  const Area *area = FindArea(path, EndpointOfMirrorHost(host.toStdString()), facts_.areas);
  // No target and no host has a line feed in it, so that no two pages have one key.
  if (!area) {
    const PageHost page_host(host, port_);
    const bool has_links_to_hosts = path == "/" || path.startsWith(event_folder);
    const QByteArray key = (has_links_to_hosts ? page_host.Key() : QByteArray()) + '\n' + path;
    return KeptPage(key, [&] { return WritePage(path, page_host); });
  }
  QByteArray key = QByteArray::number(static_cast<int>(area->endpoint)) + '\n' + path;
  QByteArray region_host;
  if (area->form == ListForm::Region) {
    region_host = IsPlainHost(host) ? host : QByteArray::fromStdString(MirrorHost(area->endpoint, port_));
    key += '\n' + region_host;
  }
  return KeptPage(key, [&] { return AreaPage(*area, *catalogue_, region_host, facts_); });
}

template <class Write>
std::optional<QByteArray> Site::KeptPage(const QByteArray &key, const Write &write) {
  if (const auto kept = kept_.constFind(key); kept != kept_.constEnd())
    return *kept;

  // The user may have changed the zone since the last page. To look for each time would take longer than the page.
  ::tzset();
  std::optional<QByteArray> page = write();
  if (!page)
    return std::nullopt;
  if (kept_bytes_ + page->size() > most_kept_bytes) {
    kept_.clear();
    kept_bytes_ = 0;
  }
  kept_.insert(key, *page);
  kept_bytes_ += page->size();
  return page;
}

std::optional<QByteArray> Site::WritePage(const QByteArray &path, const PageHost &host) const {
  if (path == "/")
    return IndexPage(*catalogue_, facts_, host);

  if (std::optional<QByteArray> page = BrowserPage(path, *catalogue_, facts_))
    return page;

  if (path.startsWith(map_folder)) {
    const QByteArray name = path.sliced(map_folder.size());
    if (const auto numbers = PageNumbers(name)) {
      const auto belongs = [&](const Event &event) { return BelongsToPage(event, numbers->first, numbers->second); };
      const ListedEvents events = ListEvents(*catalogue_, belongs);
      return QuakesPage(FrameOf(QString::fromLatin1(name.chopped(page_suffix.size())), events, facts_), events);
    }
  }

  if (path.startsWith(event_folder) && path.endsWith(page_suffix)) {
    const QByteArray id = QByteArray::fromPercentEncoding(path.sliced(event_folder.size()).chopped(page_suffix.size()));
    if (const Event *event = catalogue_->Find(QString::fromLatin1(id)))
      return EventPage(*event, *catalogue_, host, facts_);
  }
  return std::nullopt;
}

}  // namespace borvane::mirror
