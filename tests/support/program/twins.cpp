#include "support/program/twins.h"

#include "core/module1.h"
#include "records/frmRecords.h"
#include "support/failure_of.h"

namespace borvane {

namespace {

const std::string untouched = "untouched";

std::vector<std::string> Nothing() { return {}; }

std::vector<std::string> Headline() {
  if (frmRecords->Label3.Caption() == untouched)
    return {};
  return {frmRecords->Label3.Caption(), frmRecords->Label3.Tag()};
}

std::vector<std::string> RegionTable() {
  std::vector<std::string> elsewhere;
  const ListColumns &columns = frmRecords->ListView1.ColumnHeaders;
  if (columns.Count() == 7)
    elsewhere.emplace_back("columns");
  if (frmRecords->ListView2.ListItems(1).Text != untouched)
    elsewhere.push_back(frmRecords->ListView2.ListItems(1).Text);
  if (columns.Count() == 7 && columns(2).Width == 5000 && columns(3).Width == 5300 && columns(4).Width == 1)
    elsewhere.emplace_back("widths");
  return elsewhere;
}

}  // namespace

const Twins quakes_list_twins = {ScanQuakesList, plain::ScanQuakesList, Nothing};
const Twins map_list_twins = {ScanMapList, plain::ScanMapList, Nothing};
const Twins map_anchor_list_twins = {ScanMapAnchorList, plain::ScanMapAnchorList, Nothing};
const Twins world_list_twins = {ScanWorldList, plain::ScanWorldList, Nothing};
const Twins world_headline_twins = {ScanWorldList, plain::ScanWorldHeadline, Headline, true};
const Twins region_table_twins = {ScanRegionTable, plain::ScanRegionTable, RegionTable};

plain::ScanResult ResultOf(const Twins &twins, std::string page) {
  ListView &list = frmRecords->ListView1;
  list.ListItems.Clear();
  list.ColumnHeaders.Clear();
  frmRecords->ListView2.ListItems.SetText(1, untouched);
  frmRecords->Label3.Caption = untouched;
  Module1->SiteRoot = "";
  Module1->GlobalScanFlag = twins.for_headline ? flag_true : flag_false;

  plain::ScanResult result;
  Integer mode = 3;
  result.failure = FailureOf([&] { twins.scan(mode, page); });
  for (int number = 1; number <= list.ListItems.Count(); ++number) {
    const ListItem &item = list.ListItems(number);
    plain::Row &row = result.rows.emplace_back();
    row[0] = item.Text;
    for (int column = 1; column <= 7; ++column)
      row[static_cast<std::size_t>(column)] = item.SubItems(column);
  }
  result.elsewhere = twins.elsewhere();
  result.rest = std::move(page);
  return result;
}

}  // namespace borvane
