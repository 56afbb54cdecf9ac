#include "records/links.h"

#include "basic/text.h"
#include "core/program.h"
#include "records/frmRecords.h"
#include "settings/conffrm.h"

namespace borvane {

namespace {

/// Whether the chosen area's list has the columns of the table of Alaska.
bool IsRegionFamily() {
  // Meant (links-go-by-the-chosen-area): the rows should say which columns they have. The text of the list of areas
  // does, also while the rows of another area are still listed.
  constexpr int position_of_alaska = 14;
  return conffrm->Combo2.Text() == conffrm->Combo2.List(position_of_alaska);
}

/// The address of a page of the site that is watched.
std::string OnSite(std::string_view link) {
  // Meant (link-behind-a-whole-address): the link should be joined to scheme and host. While a page is being fetched,
  // and after a click on the popup, the shared address is a whole one, and the joined address leads nowhere.
  return Module1->SiteRoot + std::string(link);
}

}  // namespace

void OpenMapPage(std::string &address) {
  const ListItem &selected = frmRecords->ListView1.SelectedItem();
  address = IsRegionFamily() ? std::string(selected.SubItems(3)) : OnSite(selected.SubItems(7));
}

std::string GetLastEventUrl() {
  // Meant (more-info-of-an-empty-list-ends-the-program): without a row there should be no address. There is no row 1 to
  // read, and no trap holds that.
  const std::string_view link = frmRecords->ListView1.ListItems(1).SubItems(7);
  return Find(link, "/") > 0 ? OnSite(link) : std::string();
}

}  // namespace borvane
