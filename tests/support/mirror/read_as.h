#pragma once

#include <string>

#include "pages/areas.h"
#include "support/plain_scanners.h"

namespace borvane::mirror {

/// An area of that form with the whole world in its box, so that every event of a catalogue belongs to it.
inline Area AnywhereWith(ListForm form) {
  return {.name = "Anywhere",
          .endpoint = Endpoint::National,
          .path = "/",
          .form = form,
          .box = {.south = -90, .north = 90, .west = -180, .east = 180}};
}

/// Reads a list page as the monitor's scanner of the form does. The link of the region's row is as a browser and the
/// mirror understand it.
inline plain::ScanResult ReadAs(ListForm form, const std::string &page) {
  switch (form) {
    case ListForm::Quakes:
      return plain::ScanQuakesList(page);
    case ListForm::MapList:
      return plain::ScanMapList(page);
    case ListForm::MapAnchor:
      return plain::ScanMapAnchorList(page);
    case ListForm::World:
      return plain::ScanWorldList(page);
    case ListForm::Region: {
      plain::ScanResult scan = plain::ScanRegionTable(page);
      for (plain::Row &row : scan.rows) {
        std::string &link = row[plain::region_column::link];
        link = QByteArray::fromPercentEncoding(QByteArray::fromStdString(link)).toStdString();
      }
      return scan;
    }
  }
  return {};
}

}  // namespace borvane::mirror
