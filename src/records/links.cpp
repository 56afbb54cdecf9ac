#include "records/links.h"

#include "alert/quake_log.h"
#include "basic/number.h"
#include "basic/text.h"
#include "core/program.h"
#include "feed/hosts.h"
#include "records/frmRecords.h"
#include "scan/detail_page.h"
#include "settings/conffrm.h"

namespace borvane {

namespace {

/// The address of a page of the site that is watched.
std::string OnSite(std::string_view link) {
  // Meant (link-after-a-whole-address): the link should be joined to scheme and host. While a page is being fetched,
  // and after a click on the popup, the shared address is a whole one, and the joined address leads nowhere.
  return Module1->SiteRoot + std::string(link);
}

/// Both coordinates of the selected row, as the map's address has them.
std::string Coordinates() {
  const bool is_region = IsRegionFamily();
  const ListItem &selected = frmRecords->ListView1.SelectedItem();
  if (!is_region)
    return std::string(selected.SubItems(3)).append(",").append(selected.SubItems(4));

  float latitude = 0;
  float longitude = 0;
  if (selected.SubItems(4).empty()) {
    const std::string page = FetchDetailPage(std::string(selected.SubItems(3)));
    ScanLatLon(page, read_coordinates, latitude, longitude);
  } else {
    latitude = SinglePrefix(selected.SubItems(4));
    longitude = SinglePrefix(selected.SubItems(5));
  }
  const char separator = platform().region.DecimalSeparator();
  return SingleText(latitude, separator) + "," + SingleText(longitude, separator);
}

/// The name of the host of a site, without scheme and port.
std::string_view HostNameOf(std::string_view site) {
  const std::size_t begin = site.find("://") + 3;
  return site.substr(begin, site.find_first_of(":/", begin) - begin);
}

}  // namespace

bool IsRegionFamily() {
  // Meant (links-go-by-the-chosen-area): the rows should say which columns they have. The text of the list of areas
  // does, also while the rows of another area are still listed.
  constexpr int position_of_alaska = 14;
  return conffrm->Combo2.Text() == conffrm->Combo2.List(position_of_alaska);
}

void OpenMapPage(std::string &address) {
  // Meant (menu-of-an-emptied-list-ends-the-program): an entry without a row should do nothing, as one that is chosen
  // after a refresh has emptied the list. There is no selected row to read, and no trap holds that.
  const ListItem &selected = frmRecords->ListView1.SelectedItem();
  address = IsRegionFamily() ? std::string(selected.SubItems(3)) : OnSite(selected.SubItems(7));
}

std::string GetLastEventUrl() {
  // Meant (last-event-follows-the-sort): the newest event should be meant. The first row is, also in a sorted list.
  // Meant (more-info-of-an-empty-list-ends-the-program): without a row there should be no address. There is no row 1 to
  // read, and no trap holds that.
  const std::string_view link = frmRecords->ListView1.ListItems(1).SubItems(7);
  return Find(link, "/") > 0 ? OnSite(link) : std::string();
}

std::string MapAddress() {
  // Meant (links-are-not-escaped): a text in an address should be escaped. It is put there as it is, here and in the
  // searches: an "&" or a "#" in it ends the search.
  return AddressOf(BrowserEndpoint::Maps, "/maps?near=" + Coordinates());
}

std::string HeadlinePlace() {
  const std::string &headline = frmRecords->Label3.Caption();
  constexpr int after_the_colon_of_the_magnitude = 5;
  const Integer begin = Integer(Find(headline, ":", after_the_colon_of_the_magnitude)) + 1;

  // Meant (place-ends-before-time): the place should end before the headline's last "Time". It ends before the first
  // one, which may be in the place's own name, without the character in front of it.
  const Integer end = Integer(Find(headline, "Time", begin)) - 1;

  // Meant (wiki-without-headline-ends-the-program): without a headline there should be nothing to look up. "N/A" has no
  // "Time", so the length is negative, and no trap holds that.
  return std::string(Trim(Piece(headline, begin, end - begin)));
}

std::string EncyclopediaAddress() {
  return AddressOf(BrowserEndpoint::Encyclopedia, "/wiki/Special:Search/" + HeadlinePlace());
}

std::string WebSearchAddress() {
  const std::string encyclopedia = SiteOf(BrowserEndpoint::Encyclopedia);
  return AddressOf(BrowserEndpoint::WebSearch,
                   "/search?q=" + HeadlinePlace() + "%2Bsite:" + std::string(HostNameOf(encyclopedia)));
}

std::string HelpPath() {
  const std::string folder = platform().process.Folder();
  const std::string name = path_separator + std::string("help.html");
  const std::string shared = path_separator + std::string("share") + path_separator + "borvane";

  // Where the program is installed its executable is in a folder with those of other programs.
  const std::string installed = folder.substr(0, folder.rfind(path_separator)) + shared + name;
  const bool is_installed = !platform().files.Exists(folder + name) && platform().files.Exists(installed);
  return is_installed ? installed : folder + name;
}

void RecordsForm::mnuMapGoo_Click() { platform().shell.Open(MapAddress(), this); }

void RecordsForm::mnuOpenMap_Click() {
  std::string address;
  OpenMapPage(address);
  platform().shell.Open(address, this);
}

void RecordsForm::mnuGlobalInfo_Click() { platform().shell.Open(Label3.Tag(), this); }

void RecordsForm::mnuWiki_Click() { platform().shell.Open(EncyclopediaAddress(), this); }

void RecordsForm::mnuwikipassGoogle_Click() { platform().shell.Open(WebSearchAddress(), this); }

void RecordsForm::Label5_Click() { platform().shell.OpenFile(LogPath(), this); }

void RecordsForm::Label7_Click() { platform().shell.OpenFile(HelpPath(), this); }

}  // namespace borvane
