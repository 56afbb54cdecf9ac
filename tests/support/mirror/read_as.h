#pragma once

#include <string>

#include "pages/areas.h"
#include "support/mirror/list_readers.h"

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
inline ListReading ReadAs(ListForm form, const std::string &page) {
  switch (form) {
    case ListForm::Quakes:
      return ReadQuakesList(page);
    case ListForm::MapList:
      return ReadMapList(page);
    case ListForm::MapAnchor:
      return ReadMapAnchorList(page);
    case ListForm::World:
      return ReadWorldList(page);
    case ListForm::Region: {
      ListReading reading = ReadRegionTable(page).list;
      for (ListRow &row : reading.rows)
        row.link = QByteArray::fromPercentEncoding(QByteArray::fromStdString(row.link)).toStdString();
      return reading;
    }
  }
  return {};
}

}  // namespace borvane::mirror
